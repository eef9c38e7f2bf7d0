#pragma once

#include "util/runtimeerror.h"

#include <QtGlobal>
#include <algorithm>
#include <vector>

namespace tavik {

// A growable array of records with lower bound 0, as the store keeps its keys and items.
// Slots past the stored ones are blank records that exist only by count: an array sized
// from a count in a file costs memory only for the records the file really held.
template <typename T> class SlotArray {
public:
    bool allocated() const { return allocated_; }
    qint64 size() const { return size_; }
    qint64 storedCount() const { return static_cast<qint64>(stored_.size()); }

    // Reading a slot outside the array is the runtime's subscript error.
    const T& get(qint64 index) const {
        check(index);
        return index < storedCount() ? stored_[static_cast<std::size_t>(index)] : blank();
    }

    T& ref(qint64 index) {
        check(index);
        if (index >= storedCount())
            stored_.resize(static_cast<std::size_t>(index) + 1);
        return stored_[static_cast<std::size_t>(index)];
    }

    // Resizes to the slots 0 to `upper`, keeping the contents; an upper bound below 0 is
    // the runtime's subscript error.
    void redimPreserve(qint64 upper) {
        if (upper < 0)
            throw RuntimeError(rt::SubscriptOutOfRange);
        allocated_ = true;
        size_ = upper + 1;
        if (storedCount() > size_)
            stored_.resize(static_cast<std::size_t>(size_));
    }

    // Room for `count` stored records, so that storing them one by one from slot 0 on
    // copies none; the slots and their contents stay as they are.
    void reserveStored(qint64 count) {
        stored_.reserve(static_cast<std::size_t>(std::clamp<qint64>(count, 0, size_)));
    }

    // Throws away every slot and makes `count` blank ones.
    void reset(qint64 count) {
        stored_.clear();
        allocated_ = true;
        size_ = count;
    }

private:
    void check(qint64 index) const {
        if (!allocated_ || index < 0 || index >= size_)
            throw RuntimeError(rt::SubscriptOutOfRange);
    }
    static const T& blank() {
        static const T record{};
        return record;
    }

    std::vector<T> stored_;
    qint64 size_ = 0;
    bool allocated_ = false;
};

} // namespace tavik
