#include "support/screenplatform.h"

namespace tavik::test {

QByteArray RealScreenPlatform() {
    return QByteArrayLiteral("windows");
}

QString ArtifactName(const QString& name) {
    return QStringLiteral("windows-") + name;
}

} // namespace tavik::test
