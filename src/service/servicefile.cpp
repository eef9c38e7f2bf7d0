#include "servicefile.h"

#include "package/findingdetail.h"
#include "util/bytereader.h"
#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"
#include "util/wholeread.h"

#include <QFile>
#include <array>

namespace tavik {

namespace {

using Status = ServiceReadResult::Status;

// Header lengths count characters and every character is one byte on disk.
QByteArray headerBytes(const QString& text) {
    return toCp1252(text);
}

void writeSentence(ByteWriter& out, const SatzRecord& satz) {
    out.countedString(satz.Key);
    out.countedString(satz.Text);
    if (!satz.TargetsDimensioned) {
        out.u16(0);
    } else {
        out.u16(1);
        out.i32(static_cast<std::int32_t>(satz.Targets.size()));
        out.i32(0);
        for (const SatzTarget& target : satz.Targets) {
            out.countedString(target.AnnouncementKey);
            out.i16(target.TimeOffset);
        }
    }
    out.i16(satz.LastTarget);
}

void fail(ServiceReadResult& result, Status status, int error, const QString& problem) {
    result.status = status;
    result.runtimeError = error;
    result.problem = problem;
}

void failTruncated(ServiceReadResult& result, const ByteReader& in) {
    fail(result, Status::Truncated, rt::InputPastEnd,
         detailText(DetailText::EndsInsideField, {QString::number(in.pos())}));
}

// Reads one sentence; a descriptor no editor writes marks the reader broken.
void readSentence(ByteReader& in, SatzRecord& satz) {
    satz.Key = in.countedString();
    satz.Text = in.countedString();
    const qint64 descriptorAt = in.pos();
    const std::uint16_t dimensions = in.u16();
    if (dimensions == 0) {
        satz.TargetsDimensioned = false;
    } else if (dimensions == 1) {
        const std::int32_t count = in.i32();
        const std::int32_t lowerBound = in.i32();
        if (count < 0 || lowerBound != 0) {
            in.markBroken(detailText(DetailText::EntryArrayEntries,
                                     {QString::number(count), QString::number(lowerBound),
                                      QString::number(descriptorAt)}));
            return;
        }
        // Entries are appended as they are read, so a huge count costs nothing the data
        // does not hold.
        for (std::int32_t i = 0; i < count && !in.truncated(); ++i) {
            if (in.atEnd()) {
                in.markTruncated();
                return;
            }
            SatzTarget target;
            target.AnnouncementKey = in.countedString();
            target.TimeOffset = in.i16();
            satz.Targets.append(target);
        }
    } else {
        in.markBroken(detailText(DetailText::EntryArrayDimensions,
                                 {QString::number(dimensions), QString::number(descriptorAt)}));
        return;
    }
    satz.LastTarget = in.i16();
}

} // namespace

QByteArray ServiceFileBytes(const ServiceHeader& header, const QList<SatzRecord>& sentences) {
    const std::array<QByteArray, 4> texts = {headerBytes(header.Title), headerBytes(header.Author),
                                             headerBytes(header.Description),
                                             headerBytes(header.Id)};
    ByteWriter out;
    for (const QByteArray& text : texts)
        out.i32(static_cast<std::int32_t>(text.size()));
    for (const QByteArray& text : texts)
        out.raw(text);
    if (sentences.size() > 32767)
        throw RuntimeError(rt::Overflow);
    out.i16(static_cast<std::int16_t>(sentences.size()));
    for (const SatzRecord& satz : sentences)
        writeSentence(out, satz);
    return out.data();
}

ServiceReadResult ReadServiceBytes(const uchar* data, qint64 size) {
    ServiceReadResult result;
    ByteReader in(data, size);
    std::array<std::int32_t, 4> lengths{};
    for (std::int32_t& length : lengths)
        length = in.i32();
    if (in.truncated()) {
        failTruncated(result, in);
        return result;
    }
    // The texts are made as that many blanks before any is read: a negative length fails
    // before the first text.
    for (std::size_t k = 0; k < lengths.size(); ++k) {
        if (lengths[k] < 0) {
            fail(result, Status::Broken, rt::InvalidCall,
                 detailText(DetailText::HeaderTextLength,
                            {QString::number(k + 1), QString::number(lengths[k])}));
            return result;
        }
    }
    std::array<QString*, 4> texts = {&result.header.Title, &result.header.Author,
                                     &result.header.Description, &result.header.Id};
    for (std::size_t k = 0; k < texts.size(); ++k) {
        *texts[k] = fromCp1252(in.bytes(lengths[k]));
        if (in.truncated()) {
            failTruncated(result, in);
            return result;
        }
    }
    result.declaredCount = in.i16();
    if (in.truncated()) {
        failTruncated(result, in);
        return result;
    }
    if (result.declaredCount < 1) {
        fail(result, Status::NoService, rt::SubscriptOutOfRange,
             detailText(DetailText::SentenceCount, {QString::number(result.declaredCount)}));
        return result;
    }
    for (std::int16_t i = 0; i < result.declaredCount; ++i) {
        SatzRecord satz;
        readSentence(in, satz);
        if (in.broken()) {
            fail(result, Status::Broken, rt::SubscriptOutOfRange,
                 detailText(DetailText::InSentence, {QString::number(i + 1), in.problem()}));
            return result;
        }
        if (in.truncated()) {
            failTruncated(result, in);
            return result;
        }
        result.sentences.append(satz);
    }
    result.endOffset = in.pos();
    return result;
}

ServiceReadResult ReadServiceFile(const QString& path, bool deleteEmpty) {
    if (!FileCheck(path, deleteEmpty)) {
        ServiceReadResult result;
        fail(result, Status::Missing, 0, detailText(DetailText::MissingOrEmpty));
        return result;
    }
    // One consistent copy in memory: another program may rewrite the file while it is read.
    const WholeRead read = ReadWholeFile(path);
    if (!read.ok()) {
        ServiceReadResult result;
        fail(result, Status::Missing, 0,
             read.status == WholeRead::Status::KeptChanging
                 ? detailText(DetailText::ChangedOnEveryRead)
                 : detailText(DetailText::CannotBeRead));
        return result;
    }
    return ReadServiceBytes(reinterpret_cast<const uchar*>(read.bytes.constData()),
                            read.bytes.size());
}

void WriteServiceFile(const QString& path, const QByteArray& bytes) {
    QByteArray whole = bytes;
    {
        QFile old(path);
        if (!IsLink(path) && old.size() > bytes.size()) {
            // The tail is part of what the file must hold afterwards: a failed read saves
            // nothing.
            if (!OpenToRead(old) || !old.seek(bytes.size()))
                throw RuntimeError(rt::PathFileAccess);
            const QByteArray tail = old.readAll();
            if (old.error() != QFileDevice::NoError || tail.size() != old.size() - bytes.size())
                throw RuntimeError(rt::DeviceIO);
            whole.append(tail);
        }
    } // closed before the new file takes its place: Windows replaces no file that is open
    WriteFileAtomically(path, whole);
}

void GetFileInfo(const QString& path, QString& title, QString& author, QString& description) {
    if (!FileCheck(path, true))
        return;
    QFile file(path);
    if (!OpenToRead(file))
        return;
    const QByteArray lengthBytes = file.read(16);
    ByteReader lengths(reinterpret_cast<const uchar*>(lengthBytes.constData()), lengthBytes.size());
    std::array<std::int32_t, 3> counts{};
    for (std::int32_t& count : counts)
        count = lengths.i32();
    std::array<QString*, 3> texts = {&title, &author, &description};
    for (std::size_t k = 0; k < texts.size(); ++k) {
        // A failing statement is skipped: a negative length leaves its text empty and reads
        // nothing; a text cut by the end of the file keeps what is there.
        if (counts[k] <= 0)
            continue;
        *texts[k] = fromCp1252(file.read(std::min<qint64>(counts[k], file.size())));
    }
}

} // namespace tavik
