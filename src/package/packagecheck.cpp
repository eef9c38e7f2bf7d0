#include "packagecheck.h"

#include "package/clszeldb.h"
#include "package/findingdetail.h"
#include "package/packagefolder.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QStringDecoder>
#include <algorithm>
#include <memory>
#include <utility>

namespace tavik {

namespace {

QString text(const char16_t* s) {
    return QString::fromUtf16(s);
}

QString fileOf(const char16_t* fixedName) {
    return text(fixedName).mid(1); // without its leading "\"
}

QString typeName(VarType type) {
    switch (type) {
    case VarType::Empty:
        return QStringLiteral("Empty");
    case VarType::Integer:
        return QStringLiteral("Integer");
    case VarType::Long:
        return QStringLiteral("Long");
    case VarType::Double:
        return QStringLiteral("Double");
    case VarType::Date:
        return QStringLiteral("Date");
    case VarType::String:
        return QStringLiteral("String");
    case VarType::Boolean:
        return QStringLiteral("Boolean");
    }
    return {};
}

QString runtimeDetail(const RuntimeError& e) {
    return detailText(DetailText::RuntimeError, {QString::number(e.number())});
}

// The store's keys and items by name, found as FindKey and FindItem find them (the first slot
// in use with that name; a scan that runs past a key's items array is the runtime's subscript
// error), but each slot read once: a hostile index of 32,767 entries stays fast to check.
class StoreLookup {
public:
    explicit StoreLookup(const clsZELDB& store) {
        const SlotArray<ZeldbKey>& keys = store.keySlots();
        for (qint64 i = 0; i < store.header().KeyCount && i < keys.size(); ++i) {
            const ZeldbKey& key = keys.get(i);
            if (key.InUse != 0 && !keys_.contains(key.Name))
                keys_.insert(key.Name, &key);
        }
    }

    // The item's value, or null when the key or the item is not there.
    const Variant* find(const QString& key, const QString& item) {
        const ZeldbKey* record = keys_.value(key);
        if (!record)
            return nullptr;
        Items& items = items_[record];
        if (!items.built)
            build(*record, items);
        const auto it = items.byName.constFind(item);
        if (it != items.byName.constEnd())
            return *it;
        if (items.scanFails)
            throw RuntimeError(rt::SubscriptOutOfRange);
        return nullptr;
    }
    Variant get(const QString& key, const QString& item, const QString& defaultText) {
        const Variant* value = find(key, item);
        return value ? *value : Variant::fromString(defaultText);
    }

private:
    struct Items {
        bool built = false;
        bool scanFails = false;
        QHash<QString, const Variant*> byName;
    };
    static void build(const ZeldbKey& key, Items& items) {
        items.built = true;
        for (qint64 i = 0; i < key.ItemCount; ++i) {
            if (!key.Items.allocated() || i >= key.Items.size()) {
                items.scanFails = true;
                return;
            }
            const ZeldbItem& item = key.Items.get(i);
            if (item.InUse != 0 && !items.byName.contains(item.Name))
                items.byName.insert(item.Name, &item.Value);
        }
    }

    QHash<QString, const ZeldbKey*> keys_;
    QHash<const ZeldbKey*, Items> items_;
};

class IndexChecker {
public:
    IndexChecker(QString folder, PackageSounds& sounds)
        : folder_(NativePath(folder)), sounds_(sounds), files_(folder_) {}

    IndexCheck run();

private:
    void add(Severity severity, FindingKind kind, const QString& file, const QString& detail,
             int position = 0, const QString& key = {}) {
        Finding f;
        f.severity = severity;
        f.kind = kind;
        f.file = file;
        f.position = position;
        f.key = key;
        f.detail = detail;
        result_.findings.append(f);
    }
    void checkLinks();
    bool openIndex();
    void checkInfo();
    void checkEntries();
    void checkEntry(int position, const QString& raw, const IndexEntry& entry);
    void checkSettings(int position, const QString& key);
    void checkSound(int position, const IndexEntry& entry);
    void checkHigherPositions(int count);
    void checkUnusedFiles();
    void checkComment();
    void checkText(const QString& file, const QString& value, int position = 0,
                   const QString& key = {});

    QString folder_;
    PackageSounds& sounds_;
    PackageFileList files_;
    clsZELDB store_;
    std::unique_ptr<StoreLookup> lookup_;
    IndexCheck result_;
    QString indexFile_ = fileOf(kIndexFileName);
    QSet<QString> usedFiles_;
    QHash<QString, int> shownAt_; // key -> first position it is shown at
};

IndexCheck IndexChecker::run() {
    if (!QFileInfo(folder_).isDir()) {
        result_.readable = false;
        add(Severity::Error, FindingKind::IndexUnreadable, indexFile_,
            detailText(DetailText::NoPackageFolder));
        return result_;
    }
    checkLinks();
    if (!openIndex())
        return result_;
    result_.opened = true;
    result_.files = files_.Names();
    lookup_ = std::make_unique<StoreLookup>(store_);
    checkInfo();
    checkEntries();
    checkUnusedFiles();
    checkComment();
    return result_;
}

void IndexChecker::checkLinks() {
    const QFileInfoList entries = QDir(folder_).entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& info : entries) {
        if (info.isSymLink())
            add(Severity::Warning, FindingKind::LinkInPackage, info.fileName(),
                info.symLinkTarget());
    }
}

bool IndexChecker::openIndex() {
    const QString path = NativePath(folder_ + text(kIndexFileName));
    const bool opened = store_.OpenIOFile(path);
    const ZeldbReadReport& report = store_.lastRead();
    using Status = ZeldbReadReport::Status;
    if (report.status == Status::Missing || report.status == Status::WrongMagic) {
        result_.readable = false;
        add(Severity::Error, FindingKind::IndexUnreadable, indexFile_, report.problem);
        return false;
    }
    if (report.status != Status::Complete)
        add(Severity::Error, FindingKind::IndexUnreadable, indexFile_, report.problem);
    if (!opened) {
        // The editor refuses a store without keys (language text 8), so it is no package.
        result_.readable = false;
        add(Severity::Error, FindingKind::IndexUnreadable, indexFile_,
            detailText(DetailText::KeyCountNotOpened, {QString::number(store_.KeyCountAtOpen)}));
        return false;
    }
    return true;
}

void IndexChecker::checkInfo() {
    for (const char16_t* item : {pkg::Name, pkg::Author}) {
        try {
            const Variant value = lookup_->get(text(pkg::Info), text(item), text(pkg::DefaultText));
            if (value.type() == VarType::String)
                checkText(indexFile_, value.stringValue(), 0, text(pkg::Info));
        } catch (const RuntimeError& e) {
            add(Severity::Error, FindingKind::IndexUnreadable, indexFile_,
                detailText(DetailText::Labelled, {text(pkg::Info), runtimeDetail(e)}), 0,
                text(pkg::Info));
        }
    }
}

void IndexChecker::checkEntries() {
    std::int16_t count = 0;
    try {
        count = CInt(lookup_->get(text(pkg::Index), text(pkg::Count), text(pkg::DefaultCount)));
    } catch (const RuntimeError& e) {
        add(Severity::Error, FindingKind::SettingType, indexFile_,
            detailText(DetailText::Labelled,
                       {text(pkg::Index) + u'/' + text(pkg::Count), runtimeDetail(e)}),
            0, text(pkg::Index));
        return;
    }
    for (int i = 1; i <= count; ++i) {
        try {
            const Variant* raw = lookup_->find(text(pkg::Index), QString::number(i));
            if (!raw) {
                // A run of missing positions is one finding: a Count of 32767 over a few
                // entries would otherwise bury everything else.
                int last = i;
                while (last < count && !lookup_->find(text(pkg::Index), QString::number(last + 1)))
                    ++last;
                add(Severity::Error, FindingKind::EntryWithoutTilde, indexFile_,
                    last == i ? detailText(DetailText::NoEntryHere)
                              : detailText(DetailText::NoEntriesAt,
                                           {QString::number(i), QString::number(last)}),
                    i);
                i = last;
                continue;
            }
            const QString entry = CStr(*raw);
            if (!entry.contains(u'~')) {
                add(Severity::Error, FindingKind::EntryWithoutTilde, indexFile_,
                    QStringLiteral("\"%1\"").arg(entry), i);
                continue;
            }
            checkEntry(i, entry, SplitIndexEntry(entry));
        } catch (const RuntimeError& e) {
            add(Severity::Error, FindingKind::EntryWithoutTilde, indexFile_, runtimeDetail(e), i);
        }
    }
    checkHigherPositions(count);
}

void IndexChecker::checkEntry(int position, const QString& raw, const IndexEntry& entry) {
    const QString soundPath = files_.GetFileName(entry.Key);
    if (!soundPath.isEmpty())
        usedFiles_.insert(QFileInfo(soundPath).fileName());
    if (entry.Title.isEmpty()) {
        add(Severity::Warning, FindingKind::EmptyTitle, indexFile_,
            QStringLiteral("\"%1\"").arg(raw), position, entry.Key);
        return;
    }
    if (raw.count(u'~') > 1)
        add(Severity::Warning, FindingKind::TildeInTitle, indexFile_,
            detailText(DetailText::TitleShownAs, {raw, entry.Title}), position, entry.Key);
    checkText(indexFile_, entry.Title, position, entry.Key);

    CheckedAnnouncement announcement;
    announcement.Key = entry.Key;
    announcement.Position = position;
    const auto seen = shownAt_.constFind(entry.Key);
    if (seen != shownAt_.constEnd())
        add(Severity::Warning, FindingKind::DuplicateKey, indexFile_,
            detailText(DetailText::AlsoAtIndex, {QString::number(*seen)}), position, entry.Key);
    else
        shownAt_.insert(entry.Key, position);

    checkSettings(position, entry.Key);
    if (!IsAnnouncementKey(entry.Key)) {
        add(Severity::Error, FindingKind::KeyNotNumber, indexFile_,
            QStringLiteral("\"%1\"").arg(entry.Key), position, entry.Key);
        result_.announcements.append(announcement);
        return;
    }
    checkSound(position, entry);
}

void IndexChecker::checkSettings(int position, const QString& key) {
    struct Expected {
        const char16_t* item;
        VarType type;
    };
    const Expected expected[] = {{pkg::Color, VarType::Long},
                                 {pkg::NameVisible, VarType::Boolean},
                                 {pkg::AutoPlace, VarType::Long}};
    for (const Expected& e : expected) {
        // A value the load converts is only stored oddly; one it cannot convert stops it.
        try {
            const Variant* found = lookup_->find(key, text(e.item));
            if (!found || found->type() == e.type)
                continue;
            const Variant value = *found;
            e.type == VarType::Boolean ? void(CBool(value)) : void(CLng(value));
            add(Severity::Note, FindingKind::SettingType, indexFile_,
                detailText(DetailText::SettingStored,
                           {text(e.item), typeName(value.type()), typeName(e.type)}),
                position, key);
        } catch (const RuntimeError& error) {
            add(Severity::Error, FindingKind::SettingType, indexFile_,
                detailText(DetailText::LoadingStops, {text(e.item), runtimeDetail(error)}),
                position, key);
        }
    }
}

void IndexChecker::checkSound(int position, const IndexEntry& entry) {
    CheckedAnnouncement announcement;
    announcement.Key = entry.Key;
    announcement.Position = position;
    const QString path = files_.GetFileName(entry.Key);
    const QString name = QFileInfo(path).fileName();
    if (path.isEmpty()) {
        add(Severity::Error, FindingKind::SoundMissing, indexFile_,
            QStringLiteral("\"%1\"").arg(entry.Title), position, entry.Key);
    } else if (!FileCheck(path)) {
        add(Severity::Error, FindingKind::SoundEmpty, name,
            detailText(DetailText::Bytes, {QStringLiteral("0")}), position, entry.Key);
    } else {
        const QString extension = GetExtension(path);
        const QString deviceType = sounds_.DeviceType(extension);
        if (deviceType.isEmpty()) {
            add(Severity::Error, FindingKind::SoundFormatUnlisted, name,
                QStringLiteral("\"%1\"").arg(extension), position, entry.Key);
        } else {
            const QString alias = QStringLiteral("tavik_check");
            const std::int16_t code = sounds_.Open(path, alias, deviceType);
            const std::int32_t length = code == -1 ? sounds_.Length(alias) : 0;
            sounds_.Close(alias);
            if (code != -1) {
                add(Severity::Error, FindingKind::SoundUnreadable, name,
                    detailText(DetailText::MediaError, {QString::number(code)}), position,
                    entry.Key);
            } else {
                announcement.Length = length;
                announcement.Measured = true;
                announcement.SoundPath = path;
                if (length <= 0)
                    add(Severity::Warning, FindingKind::SoundSilent, name,
                        QStringLiteral("%1 ms").arg(length), position, entry.Key);
            }
        }
    }
    result_.announcements.append(announcement);
}

void IndexChecker::checkHigherPositions(int count) {
    const QString index = text(pkg::Index);
    int highest = 0;
    try {
        for (int i = std::max(count, 0) + 1; i <= 32767; ++i) {
            if (!lookup_->find(index, QString::number(i)))
                break;
            highest = i;
        }
        if (highest > 0)
            add(Severity::Note, FindingKind::CountMismatch, indexFile_,
                detailText(DetailText::CountBelowEntries,
                           {QString::number(count), QString::number(highest)}),
                0, index);
        else if (count < 0)
            add(Severity::Warning, FindingKind::CountMismatch, indexFile_,
                detailText(DetailText::CountNegative, {QString::number(count)}), 0, index);
        else if (count > 0 && !lookup_->find(index, QString::number(count)))
            add(Severity::Error, FindingKind::CountMismatch, indexFile_,
                detailText(DetailText::CountWithoutEntry, {QString::number(count)}), 0, index);
    } catch (const RuntimeError&) {
        // Already named at the positions the load reads.
    }
}

void IndexChecker::checkUnusedFiles() {
    const QStringList fixed = {fileOf(kIndexFileName), fileOf(kCommentFileName),
                               fileOf(kPictureFileName)};
    for (const QString& name : files_.Names()) {
        if (fixed.contains(name, Qt::CaseInsensitive) || WildcardMatch(QStringLiteral("*._"), name))
            continue;
        if (!usedFiles_.contains(name))
            add(Severity::Warning, FindingKind::UnusedFile, name,
                detailText(DetailText::Bytes,
                           {QString::number(QFileInfo(QDir(folder_), name).size())}));
    }
}

void IndexChecker::checkComment() {
    QFile file(NativePath(folder_ + text(kCommentFileName)));
    if (OpenToRead(file))
        checkText(fileOf(kCommentFileName), fromCp1252(file.read(1024 * 1024)));
}

void IndexChecker::checkText(const QString& file, const QString& value, int position,
                             const QString& key) {
    const QString problem = CodePageProblem(value);
    if (!problem.isEmpty())
        add(Severity::Warning, FindingKind::NotCodePage, file, problem, position, key);
}

} // namespace

IndexCheck CheckPackageIndex(const QString& packageFolder, PackageSounds& sounds) {
    return IndexChecker(packageFolder, sounds).run();
}

QString CodePageProblem(const QString& text) {
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == 0x81 || u == 0x8D || u == 0x8F || u == 0x90 || u == 0x9D)
            return detailText(DetailText::NoCodePageCharacter,
                              {QStringLiteral("%1").arg(uint(u), 2, 16, QLatin1Char('0'))});
    }
    const QByteArray bytes = toCp1252(text);
    const bool nonAscii = std::any_of(bytes.begin(), bytes.end(),
                                      [](char b) { return static_cast<unsigned char>(b) >= 0x80; });
    if (!nonAscii)
        return {};
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = utf8.decode(bytes);
    if (utf8.hasError())
        return {};
    return detailText(DetailText::Utf8ShownAs, {decoded, text});
}

} // namespace tavik
