#pragma once

#include <QString>

namespace tavik::mci {

// What an MCI error code means, in words, for messages that name the command and the file.
QString ErrorMeaning(int code);

// "open of FILE failed with MCI error 281: the file's extension names no sound device"
QString CommandFailure(const QString& command, const QString& file, int code);

} // namespace tavik::mci
