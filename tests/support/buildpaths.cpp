#include "support/buildpaths.h"

namespace tavik::test {

QString CheckoutPath(const QString& relative) {
    return QStringLiteral(TAVIK_CHECKOUT) + relative;
}

QString ToolPath() {
    return QStringLiteral(TAVIK_TOOL_PATH);
}

QString BuildDir() {
    return QStringLiteral(TAVIK_BUILD_DIR);
}

QString CMakeCommand() {
    return QStringLiteral(TAVIK_CMAKE_COMMAND);
}

} // namespace tavik::test
