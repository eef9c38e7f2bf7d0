#pragma once

#include "audio/mcierrors.h"
#include "audio/modmci.h"
#include "package/packageannouncements.h"
#include "package/packagesounds.h"
#include "settings/formatsfile.h"

#include <optional>

namespace tavik {

static_assert(kAliasAlreadyOpen == mci::DuplicateAlias);

// A package's sounds opened through the MCI layer, with Formats.ini read once for the whole
// run (a load, a check).
class MciPackageSounds : public PackageSounds {
public:
    explicit MciPackageSounds(modMCI& mci) : mci_(mci) {}
    MciPackageSounds(const MciPackageSounds&) = delete;
    MciPackageSounds& operator=(const MciPackageSounds&) = delete;

    QString DeviceType(const QString& extension) override {
        if (!formats_)
            formats_.emplace();
        return formats_->IndentifyFormat(extension);
    }
    std::int16_t Open(const QString& path, const QString& alias,
                      const QString& deviceType) override {
        QString shortPath = path;
        return mci_.MciOpen(shortPath, alias, deviceType);
    }
    std::int32_t Length(const QString& alias) override { return mci_.MciGetLength(alias); }
    void Close(const QString& alias) override { mci_.MciClose(alias); }

private:
    modMCI& mci_;
    std::optional<FormatsFile> formats_; // read at the first question
};

// The table routines for callers that hold the MCI layer itself.
inline void LoadAnnouncementTable(clsZELDB& store, const QString& packageFolder, modMCI& mci,
                                  AnnouncementTable& table,
                                  const AnnouncementLoadHooks& hooks = {}) {
    MciPackageSounds sounds(mci);
    LoadAnnouncementTable(store, packageFolder, sounds, table, hooks);
}

inline void CloseAnnouncementSound(modMCI& mci, const QString& key) {
    if (IsAnnouncementKey(key))
        mci.MciClose(key);
}

inline void UnloadAnnouncementSounds(modMCI& mci, AnnouncementTable& table) {
    MciPackageSounds sounds(mci);
    UnloadAnnouncementSounds(sounds, table);
}

} // namespace tavik
