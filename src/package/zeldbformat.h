#pragma once

#include "package/zeldbrecords.h"
#include "util/bytereader.h"

namespace tavik::zeldb {

// The ten bytes every package index file starts with.
inline constexpr char kMagic[] = "IOZELDBV10";
inline constexpr qint64 kMagicSize = 10;

// The largest item array a store can write: 32,767 slots plus the one a full key grows by.
inline constexpr qint64 kMaxItemSlots = 32768;

void readHeader(ByteReader& in, ZeldbHeader& header);
// Reads one key record with its items. A record that cannot be what a store writes (an
// unknown value type, an odd array descriptor) marks the reader broken. An item named as the
// item in the same slot of `like` shares that name's text: the keys of a package repeat the
// same few setting names thousands of times.
void readKey(ByteReader& in, ZeldbKey& key, const ZeldbKey* like = nullptr);

void writeHeader(ByteWriter& out, const ZeldbHeader& header);
void writeKey(ByteWriter& out, const ZeldbKey& key);

} // namespace tavik::zeldb
