#pragma once

#include <QString>
#include <functional>

namespace tavik {

// Whether `typed` may stand in the ID box: what keeps the service file in the package folder
// (IsServiceId), no character a file name cannot hold on the add-on's system (< > " | ? *),
// and nothing code page 1252 cannot hold, since the ID is also written into the file.
bool ServiceIdTypable(const QString& typed);

// Moves a service to a new file as one step: `write` writes it to `newPath`, then `oldPath`
// goes. When either fails, `newPath` is given back what it held before (or goes when it was
// not there) and `oldPath` stays, so nothing has changed; the runtime error is raised.
void RenameServiceFile(const QString& oldPath, const QString& newPath,
                       const std::function<void(const QString&)>& write);

} // namespace tavik
