#include "support/links.h"

#include <QFile>

namespace tavik::test {

bool MakeLink(const QString& target, const QString& link) {
    return QFile::link(target, link);
}

QString LinksWhyNot() {
    return QStringLiteral("the symbolic link could not be made");
}

} // namespace tavik::test
