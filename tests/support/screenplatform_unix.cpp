#include "support/screenplatform.h"

namespace tavik::test {

QByteArray RealScreenPlatform() {
    return QByteArrayLiteral("xcb");
}

QString ArtifactName(const QString& name) {
    return name;
}

} // namespace tavik::test
