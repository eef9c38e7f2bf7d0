#pragma once

#include <QString>
#include <cstdint>

namespace tavik {

// The active language file and the look-ups that go through it. Windows are handed the
// program's one Language value instead of reaching for a global; the language dialog is the
// only one that changes LanguageFile. Nothing is cached: every look-up reads the file, so a
// change of language applies to every message from then on.
class Language {
public:
    // Full path of the active language file; empty until the start-up check has chosen one.
    QString LanguageFile;

    // Numbered text of section "_String": "&_" becomes a line break, then "%1" to "%5" are
    // replaced by a1 to a5 in that order, each over the whole current text, so an argument
    // that itself holds "%2" gets a2 in its place. "" when the number is missing.
    QString GetLangString(std::int32_t number, const QString& a1 = {}, const QString& a2 = {},
                          const QString& a3 = {}, const QString& a4 = {},
                          const QString& a5 = {}) const;

    // Numbered file of section "_Files" as a path below the installation root, or "" when
    // the number is missing or empty.
    QString GetLangFile(std::int16_t number) const;
};

// The folder that holds the "*.lng" files, with its trailing separator.
QString LanguageFolder();

// A control's value in a window section: "caption" or "caption|tool tip|anything else".
struct ControlText {
    QString caption;
    QString toolTip;
    bool hasToolTip = false;
};

ControlText ParseControlText(const QString& value);

// The text of `key` in `section` of `file`, "" when absent or when no file is chosen yet: the
// one read every language look-up makes.
QString ReadLanguageValue(const QString& file, const QString& section, const QString& key);

} // namespace tavik
