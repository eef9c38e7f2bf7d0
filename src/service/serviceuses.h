#pragma once

#include <QList>
#include <QString>

namespace tavik {

class Language;

// A sentence of one of the package's services that names an announcement.
struct ServiceUse {
    QString serviceTitle;
    QString file; // the service file's name, "_000001._"
    QString sentenceKey;
    QString sentenceText;
    bool operator==(const ServiceUse&) const = default;
};

// Every sentence of the package's service files that names the announcement `key`, in the
// order of the files and their sentences, read with the service reader. Nothing is changed:
// an empty file is not deleted, and what cannot be read whole counts with what was read.
QList<ServiceUse> FindServiceUses(const QString& packageFolder, const QString& key);

// What the question before a removal adds for `uses`: a paragraph naming each service and
// sentence; empty when no service uses the announcement.
QString ServiceUsesParagraph(const Language& language, const QList<ServiceUse>& uses);

} // namespace tavik
