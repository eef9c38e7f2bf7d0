#include "fileops.h"

#include "fileaccess.h"
#include "runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <optional>
#include <vector>

namespace tavik {

namespace {

constexpr qint64 kCopyBlock = 1 << 20;

std::mutex& faultMutex() {
    static std::mutex mutex;
    return mutex;
}

std::optional<WriteFault>& pendingFault() {
    static std::optional<WriteFault> fault;
    return fault;
}

// The fault this checked write is to meet, if the test seam holds one for it.
std::optional<WriteFault> takeFault() {
    const std::lock_guard lock(faultMutex());
    std::optional<WriteFault>& pending = pendingFault();
    if (!pending)
        return std::nullopt;
    if (--pending->call > 0)
        return std::nullopt;
    const WriteFault fault = *pending;
    pending.reset();
    return fault;
}

[[noreturn]] void raiseSystemError(int systemError) {
    throw RuntimeError(rt::FromSystemError(systemError));
}

void failIfAt(const std::optional<WriteFault>& fault, WriteStep step) {
    if (fault && fault->step == step)
        raiseSystemError(fault->systemError);
}

// A file is written only in a folder that exists, never over a folder, never through a link.
void refuseAsTarget(const QString& path) {
    const QFileInfo info(path);
    if (IsLink(path) || info.isDir())
        throw RuntimeError(rt::PathFileAccess);
    if (!QFileInfo(info.absolutePath()).isDir())
        throw RuntimeError(rt::PathNotFound);
}

// Writes every byte or raises the runtime's error for what the system answered; the test seam
// can make it fail halfway.
void writeAll(QFileDevice& file, const char* data, qint64 size,
              const std::optional<WriteFault>& fault) {
    if (fault && fault->step == WriteStep::Write) {
        writeAll(file, data, size / 2, std::nullopt);
        raiseSystemError(fault->systemError);
    }
    WriteEveryByte(file, data, size);
}

} // namespace

AtomicFileWriter::AtomicFileWriter(const QString& path) : file_(path) {
    refuseAsTarget(path);
    fault_ = takeFault();
    failIfAt(fault_, WriteStep::Open);
    // Unbuffered: nothing waits in a buffer to fail unseen when the file is committed.
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw RuntimeError(rt::PathFileAccess);
    // QSaveFile writes to a link's target: a link made since the test above ends it here.
    if (IsLink(path))
        throw RuntimeError(rt::PathFileAccess);
}

AtomicFileWriter::~AtomicFileWriter() = default;

void AtomicFileWriter::write(const char* data, qint64 size) {
    writeAll(file_, data, size, fault_);
}

void AtomicFileWriter::commit() {
    failIfAt(fault_, WriteStep::Sync);
    SyncToDisk(file_);
    if (fault_ && fault_->step == WriteStep::Commit) {
        file_.cancelWriting();
        file_.commit();
        raiseSystemError(fault_->systemError);
    }
    // A link made after the open is replaced by the file, not followed: rename works so.
    if (!file_.commit())
        throw RuntimeError(rt::PathFileAccess);
}

bool IsLink(const QString& path) {
    const QFileInfo info(path);
    return info.isSymbolicLink() || info.isJunction();
}

QStringList ListFilesAndLinks(const QString& folder) {
    QDir dir(folder);
    if (folder.isEmpty() || !dir.exists())
        return {};
    // System lists dangling links too; folders that are no links are left out below.
    const QFileInfoList entries = dir.entryInfoList(QDir::Files | QDir::Dirs | QDir::System |
                                                        QDir::Hidden | QDir::NoDotAndDotDot,
                                                    QDir::NoSort);
    QStringList names;
    for (const QFileInfo& entry : entries) {
        if (entry.isSymbolicLink() || entry.isJunction() || entry.isFile())
            names << entry.fileName();
    }
    return names;
}

bool FileCheck(const QString& path, bool deleteEmpty) {
    if (path.isEmpty())
        return false;
    // A plain file exists: one status read answers both, and a package check asks per sound.
    const QFileInfo info(path);
    if (!info.isFile())
        return false;
    if (info.size() >= 1)
        return true;
    if (deleteEmpty)
        QFile::remove(path);
    return false;
}

bool WildcardMatch(const QString& pattern, const QString& name) {
    // Iterative matcher with one backtrack point: linear in practice, never exponential.
    qsizetype p = 0, n = 0, starP = -1, starN = 0;
    while (n < name.size()) {
        if (p < pattern.size() &&
            (pattern[p] == u'?' ||
             (pattern[p] != u'*' && pattern[p].toCaseFolded() == name[n].toCaseFolded()))) {
            ++p;
            ++n;
        } else if (p < pattern.size() && pattern[p] == u'*') {
            starP = p++;
            starN = n;
        } else if (starP >= 0) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

int CompareWithoutCase(QStringView a, QStringView b) {
    // ASCII letters fold to their lower case; from the first other character on, Qt's own
    // folding decides. A character before it is ASCII, so no surrogate pair is cut apart.
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i) {
        char16_t x = a[i].unicode();
        char16_t y = b[i].unicode();
        if (x >= 0x80 || y >= 0x80)
            return a.mid(i).compare(b.mid(i), Qt::CaseInsensitive);
        if (x >= u'A' && x <= u'Z')
            x += u'a' - u'A';
        if (y >= u'A' && y <= u'Z')
            y += u'a' - u'A';
        if (x != y)
            return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

namespace {

// Sorts names without regard to case and, among those equal so, as they are. Names of plain
// ASCII (every sound's name) are folded to lower case once, into one buffer, and compared as
// bytes: a package's tens of thousands of names take that many comparisons each.
void sortWithoutCase(QStringList& names) {
    const auto byQt = [](const QString& a, const QString& b) {
        const int c = CompareWithoutCase(a, b);
        return c != 0 ? c < 0 : a < b;
    };
    qsizetype total = 0;
    for (const QString& name : names) {
        for (const QChar c : name)
            if (c.unicode() >= 0x80) {
                std::sort(names.begin(), names.end(), byQt);
                return;
            }
        total += name.size();
    }
    QByteArray folded(total, Qt::Uninitialized);
    struct Entry {
        qsizetype at;
        qsizetype size;
        qsizetype index;
    };
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(names.size()));
    qsizetype at = 0;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString& name = names[i];
        for (qsizetype k = 0; k < name.size(); ++k) {
            const char16_t c = name[k].unicode();
            folded[at + k] = static_cast<char>(c >= u'A' && c <= u'Z' ? c + (u'a' - u'A') : c);
        }
        entries.push_back({at, name.size(), i});
        at += name.size();
    }
    const char* bytes = folded.constData();
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        const int c = std::memcmp(bytes + a.at, bytes + b.at,
                                  static_cast<std::size_t>(std::min(a.size, b.size)));
        if (c != 0)
            return c < 0;
        if (a.size != b.size)
            return a.size < b.size;
        return names[a.index] < names[b.index];
    });
    QStringList sorted;
    sorted.reserve(names.size());
    for (const Entry& e : entries)
        sorted.append(names[e.index]);
    names = std::move(sorted);
}

} // namespace

QStringList ListFiles(const QString& folder) {
    QDir dir(folder);
    if (folder.isEmpty() || !dir.exists())
        return {};
    QStringList names = PlainFileNames(folder);
    sortWithoutCase(names);
    return names;
}

QString DirFirst(const QString& folder, const QString& pattern) {
    for (const QString& name : ListFiles(folder)) {
        if (WildcardMatch(pattern, name))
            return name;
    }
    return {};
}

qint64 FileLen(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists() || info.isDir())
        throw RuntimeError(rt::FileNotFound);
    return info.size();
}

void FileCopy(const QString& source, const QString& destination) {
    if (!QFileInfo(source).isFile())
        throw RuntimeError(rt::FileNotFound);
    QFile in(source);
    if (!OpenToRead(in))
        throw RuntimeError(rt::PathFileAccess);
    AtomicFileWriter out(destination);
    // Sound files can be large: copied in blocks, not read whole into memory.
    QByteArray block(kCopyBlock, Qt::Uninitialized);
    for (;;) {
        const qint64 got = in.read(block.data(), block.size());
        if (got < 0)
            throw RuntimeError(rt::DeviceIO);
        if (got == 0)
            break;
        out.write(block.constData(), got);
    }
    out.commit();
}

void Kill(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists() || info.isDir())
        throw RuntimeError(rt::FileNotFound);
    if (!QFile::remove(path))
        throw RuntimeError(rt::PathFileAccess);
}

void MkDir(const QString& path) {
    const QFileInfo info(path);
    if (info.exists())
        throw RuntimeError(rt::PathFileAccess);
    if (!QFileInfo(info.absolutePath()).isDir())
        throw RuntimeError(rt::PathNotFound);
    if (!QDir().mkdir(path))
        throw RuntimeError(rt::PathFileAccess);
}

void RmDir(const QString& path) {
    if (!QFileInfo(path).isDir())
        throw RuntimeError(rt::PathNotFound);
    if (!QDir().rmdir(path))
        throw RuntimeError(rt::PathFileAccess);
}

void WriteFileAtomically(const QString& path, const QByteArray& bytes) {
    AtomicFileWriter out(path);
    out.write(bytes.constData(), bytes.size());
    out.commit();
}

void AppendToFile(const QString& path, const QByteArray& bytes) {
    refuseAsTarget(path);
    const std::optional<WriteFault> fault = takeFault();
    failIfAt(fault, WriteStep::Open);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        throw RuntimeError(rt::PathFileAccess);
    // The link test above and the open are two steps: a link made in between is caught here.
    if (IsLink(path))
        throw RuntimeError(rt::PathFileAccess);
    const qint64 oldSize = file.size();
    try {
        writeAll(file, bytes.constData(), bytes.size(), fault);
        failIfAt(fault, WriteStep::Sync);
        failIfAt(fault, WriteStep::Commit);
    } catch (...) {
        // A record is written whole or not at all; what was there before stays.
        file.resize(oldSize);
        throw;
    }
}

void InjectWriteFault(const WriteFault& fault) {
    const std::lock_guard lock(faultMutex());
    pendingFault() = fault;
}

void ClearWriteFault() {
    const std::lock_guard lock(faultMutex());
    pendingFault().reset();
}

} // namespace tavik
