#include "packagesettings.h"

#include "util/conversions.h"

#include <string>

namespace tavik {

namespace {

// The names are literals that last as long as the program, so the texts only point at them:
// a load asks for several per entry.
QString text(const char16_t* s) {
    return QString::fromRawData(reinterpret_cast<const QChar*>(s),
                                static_cast<qsizetype>(std::char_traits<char16_t>::length(s)));
}

} // namespace

std::int16_t ReadIndexCount(clsZELDB& store) {
    return CInt(store.GetSetting(text(pkg::Index), text(pkg::Count), text(pkg::DefaultCount)));
}

IndexEntry ReadIndexEntry(clsZELDB& store, int position) {
    const Variant entry =
        store.GetSetting(text(pkg::Index), QString::number(position), text(pkg::DefaultText));
    return SplitIndexEntry(CStr(entry));
}

QList<IndexEntry> ReadShownEntries(clsZELDB& store) {
    QList<IndexEntry> entries;
    const std::int16_t count = ReadIndexCount(store);
    for (int i = 1; i <= count; ++i) {
        IndexEntry entry = ReadIndexEntry(store, i);
        if (!entry.Title.isEmpty())
            entries.append(std::move(entry));
    }
    return entries;
}

AnnouncementSettings ReadAnnouncementSettings(clsZELDB& store, const QString& key) {
    AnnouncementSettings s;
    s.Color = CLng(store.GetSetting(key, text(pkg::Color), text(pkg::DefaultColor)));
    s.NameVisible =
        CBool(store.GetSetting(key, text(pkg::NameVisible), text(pkg::DefaultNameVisible)));
    s.AutoPlace = CLng(store.GetSetting(key, text(pkg::AutoPlace), text(pkg::DefaultAutoPlace)));
    return s;
}

void WriteAnnouncementSettings(clsZELDB& store, const QString& key,
                               const AnnouncementSettings& settings) {
    store.SaveSetting(key, text(pkg::Color), Variant::fromLong(settings.Color));
    store.SaveSetting(key, text(pkg::NameVisible), Variant::fromBoolean(settings.NameVisible));
    store.SaveSetting(key, text(pkg::AutoPlace), Variant::fromLong(settings.AutoPlace));
}

} // namespace tavik
