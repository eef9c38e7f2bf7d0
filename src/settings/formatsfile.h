#pragma once

#include "settings/profilefile.h"

#include <QHash>
#include <QString>
#include <optional>

namespace tavik {

// The program folder's Formats.ini, read once: a load asks it the device type of thousands of
// sounds and gets, for each, what IndentifyFormat would read from the file at that moment.
class FormatsFile {
public:
    // Reads the program folder's formats file.
    FormatsFile();
    explicit FormatsFile(const QString& file);

    // The device type listed for a format key (a file extension); "" when none is.
    QString IndentifyFormat(const QString& key);

private:
    std::optional<profile::ProfileText> text_;
    QHash<QString, QString> answers_;
};

} // namespace tavik
