#include "keysettings.h"

#include "package/clszeldb.h"

#include <QStringList>

namespace tavik {

void ClearKeySettings(clsZELDB& store, const QString& key) {
    const SlotArray<ZeldbKey>& keys = store.keySlots();
    QStringList items;
    for (qint64 k = 0; k < keys.size() && k < store.header().KeyCount; ++k) {
        const ZeldbKey& slot = keys.get(k);
        if (slot.InUse == 0 || slot.Name != key)
            continue;
        for (qint64 i = 0; i < slot.Items.size() && i < slot.ItemCount; ++i) {
            const ZeldbItem& item = slot.Items.get(i);
            if (item.InUse != 0)
                items << item.Name;
        }
        // The store finds the first slot of a name; so does this.
        break;
    }
    for (const QString& item : std::as_const(items))
        store.DeleteItem(key, item);
}

} // namespace tavik
