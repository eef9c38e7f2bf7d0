#include "package_index_input.h"

#include "package/clszeldb.h"
#include "package/jsontextwriter.h"
#include "package/zeldbfromjson.h"
#include "package/zeldbjson.h"
#include "util/jsonfields.h"
#include "util/runtimeerror.h"

namespace tavik::fuzz {

namespace {

// Records held in memory after a read: each one began at a byte of its own in the input.
qint64 storedRecords(const clsZELDB& store) {
    const auto& keys = store.keySlots();
    qint64 total = keys.storedCount();
    for (qint64 i = 0; i < keys.storedCount(); ++i)
        total += keys.get(i).Items.storedCount();
    return total;
}

} // namespace

bool packageIndexInput(const std::uint8_t* data, std::size_t size) {
    clsZELDB store;
    store.openBytes(data, static_cast<qint64>(size));
    if (storedRecords(store) > static_cast<qint64>(size))
        return false;

    const QByteArray written = store.toBytes();
    clsZELDB again;
    again.openBytes(reinterpret_cast<const uchar*>(written.constData()), written.size());
    if (again.toBytes() != written)
        return false;

    // The dump of what was read becomes the same file by the reading of plain dumps, whenever
    // that reading takes it, as by the reading of any document.
    JsonTextWriter json;
    writeZeldbJson(json, again);
    if (const std::optional<QByteArray> plain = zeldbBytesFromDumpText(json.text())) {
        JsonTree tree;
        if (!JsonTree::read(json.text(), tree))
            return false;
        try {
            if (zeldbBytesFromJson(tree.root()) != *plain)
                return false;
        } catch (const JsonFieldError&) {
            return false;
        }
    }

    try {
        store.GetSetting(QStringLiteral("INFO"), QStringLiteral("Name"), QString());
        store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), Variant::fromLong(1));
        store.DeleteItem(QStringLiteral("INFO"), QStringLiteral("Name"));
        store.toBytes();
    } catch (const RuntimeError&) {
        // A broken store may raise the runtime's errors; that is its defined failure.
    }
    return true;
}

} // namespace tavik::fuzz
