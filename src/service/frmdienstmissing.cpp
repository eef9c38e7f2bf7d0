// A sentence that names an announcement the package no longer has: the runtime's error, and
// with it which sentence and which announcement.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "package/announcementrecord.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/runtimeerrortext.h"
#include "util/runtimeerror.h"

namespace tavik {

void frmDienst::requireAnnouncement(const SatzRecord& satz, const QString& key) const {
    // The search runs one past the table, which itself is the subscript error for a key no
    // record has.
    std::int32_t found = -1;
    try {
        found = FindAnnouncementByKey(main_.table, key);
    } catch (const RuntimeError& error) {
        if (error.number() != rt::SubscriptOutOfRange)
            throw;
    }
    if (found >= 0)
        return;
    const Language& language = main_.language();
    // The runtime's own text first, as the user knows it, then what it was about.
    const QString runtimeText = RuntimeErrorMessage(language, RuntimeError(rt::SubscriptOutOfRange))
                                    .section(QStringLiteral("\n\n"), 1);
    throw RuntimeError(rt::SubscriptOutOfRange,
                       runtimeText + QStringLiteral("\n\n") +
                           language.GetLangString(LangText::SentenceAnnouncementMissing, satz.Key,
                                                  satz.Text.trimmed(), key));
}

} // namespace tavik
