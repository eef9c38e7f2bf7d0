#pragma once

#include <QString>

namespace tavik::test {

// Where this build finds its checkout and its own programs. Kept in one source file so that the
// paths compiled into it do not make every test file differ between two checkouts.
QString CheckoutPath(const QString& relative = QString());
QString ToolPath();
QString BuildDir();
QString CMakeCommand();

} // namespace tavik::test
