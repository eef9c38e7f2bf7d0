#include "zeldbfromjson.h"

#include "package/zeldbformat.h"
#include "util/bytereader.h"
#include "util/cp1252.h"

#include <QByteArrayView>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

// A dump as the tool writes it, turned into the index file's bytes in one pass over its text:
// no tree of the document, no record of the store, no text through UTF-16. Whatever it is not
// sure of, it leaves to zeldbBytesFromJson, which reads any document and words every refusal.

namespace tavik {

namespace {

// JsonTree reads no larger text itself; the reading that does must decide about it.
constexpr qsizetype kMaxText = qsizetype(1) << 27;
constexpr qint64 kMaxCounted = 65535;
constexpr qint64 kInt16Min = std::numeric_limits<std::int16_t>::min();
constexpr qint64 kInt16Max = std::numeric_limits<std::int16_t>::max();
constexpr qint64 kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr qint64 kInt32Max = std::numeric_limits<std::int32_t>::max();

// A field's name against a name of the dump: a length and a comparison of bytes.
inline bool is(QByteArrayView name, std::string_view dumpName) {
    return name.size() == qsizetype(dumpName.size()) &&
           std::memcmp(name.data(), dumpName.data(), dumpName.size()) == 0;
}

// Thrown to give the text back to the reading of any document.
struct NotPlain {};

[[noreturn]] void notPlain() {
    throw NotPlain{};
}

class DumpText {
public:
    explicit DumpText(QByteArrayView text) : p_(text.data()), end_(text.data() + text.size()) {}

    QByteArray bytes() {
        ByteWriter out;
        // The file is a few times smaller than its dump.
        out.reserve((end_ - p_) / 4 + 256);
        out.raw(QByteArray(zeldb::kMagic, zeldb::kMagicSize));
        expect('{');
        bool format = false;
        bool header = false;
        bool keys = false;
        const auto member = [&](QByteArrayView name) {
            if (is(name, "format") && !format) {
                format = true;
                if (!is(string(), "package-index"))
                    notPlain();
            } else if (is(name, "header") && !header) {
                header = true;
                readHeader(out);
            } else if (is(name, "keys") && !keys && header) {
                // The keys follow the header, as the file has them.
                keys = true;
                readKeys(out);
            } else {
                notPlain();
            }
        };
        members(member);
        skipBlanks();
        if (p_ != end_ || !format || !header || !keys)
            notPlain();
        return out.data();
    }

private:
    // --- the JSON text ---

    void skipBlanks() {
        for (;;) {
            // A dump is indented by runs of blanks: eight at a time while there are.
            std::uint64_t eight = 0;
            while (end_ - p_ >= 8 && (std::memcpy(&eight, p_, 8), eight == 0x2020202020202020ULL))
                p_ += 8;
            if (p_ == end_ || !(*p_ == ' ' || *p_ == '\n' || *p_ == '\r' || *p_ == '\t'))
                return;
            ++p_;
        }
    }

    bool next(char c) {
        skipBlanks();
        if (p_ != end_ && *p_ == c) {
            ++p_;
            return true;
        }
        return false;
    }

    void expect(char c) {
        if (!next(c))
            notPlain();
    }

    // The members of an object whose "{" was read, each name handed to `member`, which reads
    // its value.
    template <typename Member> void members(Member&& member) {
        if (next('}'))
            return;
        do {
            const QByteArrayView name = string();
            expect(':');
            member(name);
        } while (next(','));
        expect('}');
    }

    // The bytes between the quotes of a string without escapes or control characters; its
    // UTF-8 is checked where it becomes a text.
    QByteArrayView string() {
        expect('"');
        const char* begin = p_;
        while (p_ != end_ && *p_ != '"') {
            const auto c = static_cast<unsigned char>(*p_);
            if (c == '\\' || c < 0x20)
                notPlain();
            ++p_;
        }
        if (p_ == end_)
            notPlain();
        return QByteArrayView(begin, p_++ - begin);
    }

    // A number written as a plain whole number of up to fifteen digits, not "-0".
    qint64 integer(qint64 min, qint64 max) {
        skipBlanks();
        const bool negative = p_ != end_ && *p_ == '-';
        if (negative)
            ++p_;
        const char* digits = p_;
        qint64 value = 0;
        while (p_ != end_ && *p_ >= '0' && *p_ <= '9')
            value = value * 10 + (*p_++ - '0');
        const qsizetype count = p_ - digits;
        if (count == 0 || count > 15 || (digits[0] == '0' && (count > 1 || negative)))
            notPlain();
        if (p_ != end_ && (*p_ == '.' || *p_ == 'e' || *p_ == 'E'))
            notPlain();
        value = negative ? -value : value;
        if (value < min || value > max)
            notPlain();
        return value;
    }

    bool boolean() {
        skipBlanks();
        if (end_ - p_ >= 4 && std::memcmp(p_, "true", 4) == 0) {
            p_ += 4;
            return true;
        }
        if (end_ - p_ >= 5 && std::memcmp(p_, "false", 5) == 0) {
            p_ += 5;
            return false;
        }
        notPlain();
    }

    bool null() {
        skipBlanks();
        if (end_ - p_ >= 4 && std::memcmp(p_, "null", 4) == 0) {
            p_ += 4;
            return true;
        }
        return false;
    }

    // --- the texts of the file ---

    // A text the code page holds whole, of at most 65,535 characters, as its bytes there.
    QByteArrayView text(QByteArrayView utf8) {
        qsizetype i = 0;
        while (i < utf8.size() && static_cast<unsigned char>(utf8[i]) < 0x80)
            ++i;
        if (i == utf8.size()) {
            if (utf8.size() > kMaxCounted)
                notPlain();
            return utf8;
        }
        converted_.resize(0);
        converted_.append(utf8.data(), i);
        while (i < utf8.size()) {
            const char32_t c = codePoint(utf8, i);
            if (!Cp1252HoldsCharacter(c) || c > 0xFFFF)
                notPlain();
            converted_.append(Cp1252Byte(c));
        }
        if (converted_.size() > kMaxCounted)
            notPlain();
        return converted_;
    }

    // The character at `i` of well-formed UTF-8 (the shortest form, no surrogates); `i` moves
    // past it.
    static char32_t codePoint(QByteArrayView s, qsizetype& i) {
        const auto b0 = static_cast<unsigned char>(s[i]);
        int length = 0;
        char32_t c = 0;
        char32_t least = 0;
        if (b0 < 0x80) {
            ++i;
            return b0;
        } else if (b0 >= 0xC2 && b0 <= 0xDF) {
            length = 2;
            c = b0 & 0x1F;
            least = 0x80;
        } else if (b0 >= 0xE0 && b0 <= 0xEF) {
            length = 3;
            c = b0 & 0x0F;
            least = 0x800;
        } else if (b0 >= 0xF0 && b0 <= 0xF4) {
            length = 4;
            c = b0 & 0x07;
            least = 0x10000;
        } else {
            notPlain();
        }
        if (s.size() - i < length)
            notPlain();
        for (int k = 1; k < length; ++k) {
            const auto b = static_cast<unsigned char>(s[i + k]);
            if ((b & 0xC0) != 0x80)
                notPlain();
            c = (c << 6) | (b & 0x3F);
        }
        if (c < least || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
            notPlain();
        i += length;
        return c;
    }

    // --- the index ---

    void readHeader(ByteWriter& out) {
        expect('{');
        QByteArrayView texts[4];
        bool seen[6] = {};
        qint64 keyCount = 0;
        QByteArray reserved;
        members([&](QByteArrayView name) {
            static constexpr std::string_view kNames[] = {"key_count", "reserved", "reserved_text",
                                                          "text1",     "text2",    "text3"};
            int field = 0;
            while (field < 6 && !is(name, kNames[field]))
                ++field;
            if (field == 6 || seen[field])
                notPlain();
            seen[field] = true;
            if (field == 0) {
                keyCount = integer(kInt16Min, kInt16Max);
            } else if (field == 1) {
                const QByteArrayView hex = string();
                if (hex.size() != 12)
                    notPlain();
                for (const char c : hex)
                    if (!std::isxdigit(static_cast<unsigned char>(c)))
                        notPlain();
                reserved = QByteArray::fromHex(hex.toByteArray());
            } else {
                // reserved_text, text1, text2, text3; their bytes are kept apart, since a
                // text that needs converting is converted into one shared buffer.
                texts[field - 2] = string();
            }
        });
        for (const bool s : seen)
            if (!s)
                notPlain();
        out.countedBytes(text(texts[1]));
        out.countedBytes(text(texts[2]));
        out.countedBytes(text(texts[3]));
        out.raw(reserved);
        out.countedBytes(text(texts[0]));
        out.i16(static_cast<std::int16_t>(keyCount));
    }

    void readKeys(ByteWriter& out) {
        expect('[');
        if (next(']'))
            return;
        qint64 index = 0;
        do {
            readKey(out, index++);
        } while (next(','));
        expect(']');
    }

    // A key's fields can come in any order, its items before its name: the items are written
    // apart and put behind the key's own fields when the key is read.
    void readKey(ByteWriter& out, qint64 index) {
        expect('{');
        bool inUse = false;
        bool seenInUse = false;
        bool seenItemCount = false;
        bool seenItems = false;
        bool seenSlot = false;
        bool hasItems = false;
        qint64 itemCount = 0;
        qint64 items = 0;
        QByteArray name;
        bool seenName = false;
        // One buffer for the items of every key, kept at the size of the largest.
        items_.clear();
        members([&](QByteArrayView field) {
            if (is(field, "in_use") && !seenInUse) {
                seenInUse = true;
                inUse = boolean();
            } else if (is(field, "item_count") && !seenItemCount) {
                seenItemCount = true;
                itemCount = integer(kInt16Min, kInt16Max);
            } else if (is(field, "items") && !seenItems) {
                seenItems = true;
                if (!null()) {
                    hasItems = true;
                    items = readItems(items_);
                }
            } else if (is(field, "name") && !seenName) {
                seenName = true;
                name = text(string()).toByteArray();
            } else if (is(field, "slot") && !seenSlot) {
                seenSlot = true;
                if (integer(0, kInt32Max) != index)
                    notPlain();
            } else {
                notPlain();
            }
        });
        if (!seenInUse || !seenItemCount || !seenItems || !seenName)
            notPlain();
        out.i16(inUse ? -1 : 0);
        out.countedBytes(name);
        out.i16(static_cast<std::int16_t>(itemCount));
        if (!hasItems) {
            out.u16(0);
            return;
        }
        out.u16(1);
        out.i32(static_cast<std::int32_t>(items));
        out.i32(0);
        out.raw(items_.data());
    }

    qint64 readItems(ByteWriter& out) {
        expect('[');
        if (next(']'))
            return 0;
        qint64 index = 0;
        do {
            readItem(out, index++);
            if (index > kInt32Max)
                notPlain();
        } while (next(','));
        expect(']');
        return index;
    }

    void readItem(ByteWriter& out, qint64 index) {
        expect('{');
        enum Field { InUse, Name, Reserved, Slot, Type, Value, Fields };
        // Every item has these six fields: each name is told by its length and its bytes.
        const auto fieldOf = [](QByteArrayView name) {
            switch (name.size()) {
            case 4:
                return is(name, "name")   ? Name
                       : is(name, "slot") ? Slot
                       : is(name, "type") ? Type
                                          : Fields;
            case 5:
                return is(name, "value") ? Value : Fields;
            case 6:
                return is(name, "in_use") ? InUse : Fields;
            case 8:
                return is(name, "reserved") ? Reserved : Fields;
            default:
                return Fields;
            }
        };
        bool seen[Fields] = {};
        bool inUse = false;
        QByteArrayView name;
        qint64 reserved = 0;
        qint64 type = -1;
        // The value as written: its kind is known once the type is, which may come after it.
        enum class Kind { None, Null, Bool, Number, String };
        Kind kind = Kind::None;
        bool flag = false;
        qint64 number = 0;
        QByteArrayView string;
        members([&](QByteArrayView field) {
            const Field f = fieldOf(field);
            if (f == Fields || seen[f])
                notPlain();
            seen[f] = true;
            switch (f) {
            case InUse:
                inUse = boolean();
                break;
            case Name:
                name = this->string();
                break;
            case Reserved:
                reserved = integer(kInt16Min, kInt16Max);
                break;
            case Slot:
                if (integer(0, kInt32Max) != index)
                    notPlain();
                break;
            case Type:
                type = integer(0, 65535);
                break;
            case Value:
                skipBlanks();
                if (null()) {
                    kind = Kind::Null;
                } else if (p_ != end_ && *p_ == '"') {
                    kind = Kind::String;
                    string = this->string();
                } else if (p_ != end_ && (*p_ == 't' || *p_ == 'f')) {
                    kind = Kind::Bool;
                    flag = boolean();
                } else {
                    kind = Kind::Number;
                    number = integer(kInt32Min, kInt32Max);
                }
                break;
            case Fields:
                break;
            }
        });
        if (!seen[InUse] || !seen[Name] || !seen[Reserved] || !seen[Type] || !seen[Value])
            notPlain();
        out.i16(inUse ? -1 : 0);
        out.countedBytes(text(name));
        out.i16(static_cast<std::int16_t>(reserved));
        switch (static_cast<VarType>(type)) {
        case VarType::Empty:
            if (kind != Kind::Null)
                notPlain();
            out.u16(static_cast<std::uint16_t>(VarType::Empty));
            return;
        case VarType::Integer:
            if (kind != Kind::Number || number < kInt16Min || number > kInt16Max)
                notPlain();
            out.u16(static_cast<std::uint16_t>(VarType::Integer));
            out.i16(static_cast<std::int16_t>(number));
            return;
        case VarType::Long:
            if (kind != Kind::Number)
                notPlain();
            out.u16(static_cast<std::uint16_t>(VarType::Long));
            out.i32(static_cast<std::int32_t>(number));
            return;
        case VarType::String:
            if (kind != Kind::String)
                notPlain();
            out.u16(static_cast<std::uint16_t>(VarType::String));
            out.countedBytes(text(string));
            return;
        case VarType::Boolean:
            if (kind != Kind::Bool)
                notPlain();
            out.u16(static_cast<std::uint16_t>(VarType::Boolean));
            out.i16(flag ? -1 : 0);
            return;
        default:
            // Doubles, dates and the bits of either are read the full way.
            notPlain();
        }
    }

    const char* p_;
    const char* end_;
    QByteArray converted_;
    ByteWriter items_;
};

} // namespace

std::optional<QByteArray> zeldbBytesFromDumpText(QByteArrayView text) {
    if (text.size() >= kMaxText)
        return std::nullopt;
    try {
        return DumpText(text).bytes();
    } catch (const NotPlain&) {
        return std::nullopt;
    }
}

} // namespace tavik
