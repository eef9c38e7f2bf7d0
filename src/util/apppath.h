#pragma once

#include <QString>

namespace tavik {

// The program folder: the "bin" folder of the installation root. TAVIK_HOME names a root;
// otherwise an installed program finds it as its own folder, and a development build uses
// the source checkout, which is laid out as a root. No trailing separator.
QString AppPath();

// The rule behind AppPath, for a given TAVIK_HOME value, executable folder and checkout.
QString resolveProgramFolder(const QString& tavikHome, const QString& executableFolder,
                             const QString& sourceRoot);

// Turns a path built from the program's texts ("\..\Data\") into one this system opens:
// every "\" becomes the platform's separator. Doubled separators and ".." stay, as both
// systems accept them.
QString NativePath(const QString& text);

} // namespace tavik
