#include "useformat.h"

#include "settings/modini.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/runtimeerror.h"

namespace tavik {

bool ReadUseFormat(const std::function<void(const RuntimeError&)>& onBadValue) {
    constexpr bool kDefault = false;
    try {
        return CBool(ReadINI(NativePath(AppPath() + QStringLiteral("\\Tavik.ini")),
                             QStringLiteral("SOUND"), QStringLiteral("UseFormat"),
                             Variant::fromBoolean(kDefault)));
    } catch (const RuntimeError& error) {
        if (onBadValue)
            onBadValue(error);
        return kDefault;
    }
}

} // namespace tavik
