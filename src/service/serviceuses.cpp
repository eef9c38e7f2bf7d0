#include "serviceuses.h"

#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/fileops.h"

#include <QStringList>
#include <algorithm>

namespace tavik {

namespace {

// A question stays readable: past this many uses the rest are summed up by "...".
constexpr qsizetype kUsesNamed = 20;

} // namespace

QList<ServiceUse> FindServiceUses(const QString& packageFolder, const QString& key) {
    QList<ServiceUse> uses;
    const QString folder = ServiceListFolder(packageFolder);
    for (const QString& name : ListFiles(folder)) {
        if (!WildcardMatch(QStringLiteral("*._"), name))
            continue;
        const ServiceReadResult read = ReadServiceFile(folder + name, false);
        for (const SatzRecord& satz : read.sentences) {
            const bool names = std::any_of(
                satz.Targets.begin(), satz.Targets.end(),
                [&key](const SatzTarget& target) { return target.AnnouncementKey == key; });
            if (names)
                uses.append({read.header.Title, name, satz.Key, satz.Text.trimmed()});
        }
    }
    return uses;
}

QString ServiceUsesParagraph(const Language& language, const QList<ServiceUse>& uses) {
    if (uses.isEmpty())
        return {};
    QStringList lines;
    for (qsizetype i = 0; i < uses.size() && i < kUsesNamed; ++i) {
        const ServiceUse& use = uses[i];
        lines << language.GetLangString(LangText::RemoveUsedByLine, use.serviceTitle, use.file,
                                        use.sentenceKey, use.sentenceText);
    }
    if (uses.size() > kUsesNamed)
        lines << QStringLiteral("...");
    return QStringLiteral("\r\n\r\n") +
           language.GetLangString(LangText::RemoveUsedBy, lines.join(QStringLiteral("\r\n")));
}

} // namespace tavik
