#include "jsontree.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <string_view>

namespace tavik {

namespace {

// Far beyond any dump's nesting, far below the stack's limit.
constexpr int kMaxDepth = 64;

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Four hexadecimal digits at `p`, or -1.
int hex4(const char* p) {
    int v = 0;
    for (int i = 0; i < 4; ++i) {
        const int d = hexDigit(p[i]);
        if (d < 0)
            return -1;
        v = v * 16 + d;
    }
    return v;
}

// The length of the well-formed UTF-8 sequence at `p` (its first byte 0x80 or above), or 0.
// Overlong forms, surrogates, code points past U+10FFFF and the noncharacters are refused.
int utf8Length(const unsigned char* p, const unsigned char* end) {
    const unsigned char b = p[0];
    int n;
    char32_t c;
    if (b >= 0xC2 && b <= 0xDF) {
        n = 2;
        c = b & 0x1F;
    } else if (b >= 0xE0 && b <= 0xEF) {
        n = 3;
        c = b & 0x0F;
    } else if (b >= 0xF0 && b <= 0xF4) {
        n = 4;
        c = b & 0x07;
    } else {
        return 0;
    }
    if (end - p < n)
        return 0;
    for (int i = 1; i < n; ++i) {
        if ((p[i] & 0xC0) != 0x80)
            return 0;
        c = (c << 6) | (p[i] & 0x3F);
    }
    if ((n == 3 && c < 0x800) || (n == 4 && (c < 0x10000 || c > 0x10FFFF)))
        return 0;
    if ((c >= 0xD800 && c <= 0xDFFF) || (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE)
        return 0;
    return n;
}

// The bytes a string holds as they are: printable ASCII but the quote and the backslash.
constexpr auto kPlainInString = [] {
    std::array<bool, 256> plain{};
    for (int c = 0x20; c < 0x80; ++c)
        plain[static_cast<std::size_t>(c)] = c != '"' && c != '\\';
    return plain;
}();

} // namespace

// Reads the text into nodes; any refusal is final (the caller turns to Qt).
class JsonTextReader {
public:
    explicit JsonTextReader(JsonTree& tree)
        : t_(tree), begin_(tree.text_.constData()), p_(begin_), end_(begin_ + tree.text_.size()) {}

    bool document() {
        space();
        if (p_ == end_ || *p_ != '{')
            return false;
        std::uint32_t root;
        if (!value(root, 0))
            return false;
        space();
        return p_ == end_;
    }

private:
    void space() {
        // A dump is indented: its blanks come in runs, read eight at a time.
        constexpr std::uint64_t kBlanks = 0x2020202020202020ULL;
        const char* p = p_;
        if constexpr (std::endian::native == std::endian::little) {
            while (end_ - p >= 8) {
                // The first byte that is no blank, counted from the word's lowest byte.
                const std::uint64_t other = load8(p) ^ kBlanks;
                if (other == 0) {
                    p += 8;
                    continue;
                }
                p += std::countr_zero(other) / 8;
                if (*p != '\n' && *p != '\r' && *p != '\t') {
                    p_ = p;
                    return;
                }
                ++p;
            }
        }
        while (p != end_ && (*p == ' ' || *p == '\n' || *p == '\r' || *p == '\t'))
            ++p;
        p_ = p;
    }

    static std::uint64_t load8(const char* p) {
        std::uint64_t w;
        std::memcpy(&w, p, sizeof w);
        return w;
    }

    bool literal(const char* word, JsonTree::Kind kind, std::uint32_t& out) {
        const std::size_t n = std::strlen(word);
        if (std::size_t(end_ - p_) < n || std::memcmp(p_, word, n) != 0)
            return false;
        p_ += n;
        out = t_.add(kind);
        return true;
    }

    bool value(std::uint32_t& out, int depth) {
        if (p_ == end_)
            return false;
        switch (*p_) {
        case '{':
            return object(out, depth + 1);
        case '[':
            return array(out, depth + 1);
        case '"':
            return string(out, nullptr);
        case 't':
            return literal("true", JsonTree::Kind::True, out);
        case 'f':
            return literal("false", JsonTree::Kind::False, out);
        case 'n':
            return literal("null", JsonTree::Kind::Null, out);
        default:
            return number(out);
        }
    }

    bool digits() {
        const char* start = p_;
        while (p_ != end_ && *p_ >= '0' && *p_ <= '9')
            ++p_;
        return p_ != start;
    }

    bool number(std::uint32_t& out) {
        const char* start = p_;
        if (p_ != end_ && *p_ == '-')
            ++p_;
        if (p_ == end_)
            return false;
        if (*p_ == '0')
            ++p_;
        else if (!digits())
            return false;
        if (p_ != end_ && *p_ == '.') {
            ++p_;
            if (!digits())
                return false;
        }
        if (p_ != end_ && (*p_ == 'e' || *p_ == 'E')) {
            ++p_;
            if (p_ != end_ && (*p_ == '+' || *p_ == '-'))
                ++p_;
            if (!digits())
                return false;
        }
        double d = 0;
        // A whole number of up to 15 digits is exact in a double: read it directly.
        const char* first = *start == '-' ? start + 1 : start;
        if (p_ - first <= 15 &&
            std::all_of(first, p_, [](char c) { return c >= '0' && c <= '9'; })) {
            std::int64_t whole = 0;
            for (const char* c = first; c != p_; ++c)
                whole = whole * 10 + (*c - '0');
            if (whole == 0 && first != start)
                return false;
            out = t_.addNumber(first != start ? -double(whole) : double(whole));
            return true;
        }
        const auto [at, error] = std::from_chars(start, p_, d);
        // Qt refuses what does not fit a double and keeps no minus on a zero.
        if (error != std::errc() || at != p_ || (d == 0 && *start == '-'))
            return false;
        out = t_.addNumber(d);
        return true;
    }

    // A string; a name (`name` set) must not be escaped, so names compare as bytes.
    bool string(std::uint32_t& out, bool* escapedName) {
        const char* start = ++p_;
        bool escaped = false;
        while (true) {
            const char* p = p_;
            while (p != end_ && kPlainInString[static_cast<unsigned char>(*p)])
                ++p;
            p_ = p;
            if (p_ == end_)
                return false;
            const auto c = static_cast<unsigned char>(*p_);
            if (c == '"')
                break;
            if (c < 0x20)
                return false;
            if (c == '\\') {
                escaped = true;
                if (end_ - p_ < 2)
                    return false;
                const char e = p_[1];
                if (e == 'u') {
                    if (end_ - p_ < 6)
                        return false;
                    const int u = hex4(p_ + 2);
                    if (u < 0 || (u >= 0xD800 && u <= 0xDFFF))
                        return false;
                    p_ += 6;
                } else if (e != 0 && std::strchr("\"\\/bfnrt", e)) {
                    p_ += 2;
                } else {
                    return false;
                }
            } else if (c >= 0x80) {
                const int n = utf8Length(reinterpret_cast<const unsigned char*>(p_),
                                         reinterpret_cast<const unsigned char*>(end_));
                if (n == 0)
                    return false;
                p_ += n;
            } else {
                ++p_;
            }
        }
        const std::uint32_t length = static_cast<std::uint32_t>(p_ - start);
        ++p_;
        if (escapedName)
            *escapedName = escaped;
        out = t_.add(JsonTree::Kind::String,
                     escaped ? JsonTree::Text::Escaped : JsonTree::Text::Plain, length,
                     static_cast<std::uint32_t>(start - begin_));
        return true;
    }

    // Moves the entries gathered since `mark` into the tree's links.
    std::uint32_t link(std::size_t mark) {
        const auto first = static_cast<std::uint32_t>(t_.links_.size());
        t_.links_.insert(t_.links_.end(), pending_.begin() + static_cast<std::ptrdiff_t>(mark),
                         pending_.end());
        pending_.resize(mark);
        return first;
    }

    bool array(std::uint32_t& out, int depth) {
        if (depth > kMaxDepth)
            return false;
        ++p_;
        const std::size_t mark = pending_.size();
        space();
        if (p_ != end_ && *p_ == ']') {
            ++p_;
        } else {
            while (true) {
                std::uint32_t element;
                if (!value(element, depth))
                    return false;
                pending_.push_back(element);
                space();
                if (p_ == end_)
                    return false;
                if (*p_ == ']') {
                    ++p_;
                    break;
                }
                if (*p_ != ',')
                    return false;
                ++p_;
                space();
            }
        }
        const auto count = static_cast<std::uint32_t>(pending_.size() - mark);
        out = t_.add(JsonTree::Kind::Array, JsonTree::Text::Plain, count, link(mark));
        return true;
    }

    bool object(std::uint32_t& out, int depth) {
        if (depth > kMaxDepth)
            return false;
        ++p_;
        const std::size_t mark = pending_.size();
        space();
        if (p_ != end_ && *p_ == '}') {
            ++p_;
        } else {
            while (true) {
                if (p_ == end_ || *p_ != '"')
                    return false;
                std::uint32_t name, member;
                bool escaped = false;
                if (!string(name, &escaped) || escaped)
                    return false;
                space();
                if (p_ == end_ || *p_ != ':')
                    return false;
                ++p_;
                space();
                if (!value(member, depth))
                    return false;
                pending_.push_back(name);
                pending_.push_back(member);
                space();
                if (p_ == end_)
                    return false;
                if (*p_ == '}') {
                    ++p_;
                    break;
                }
                if (*p_ != ',')
                    return false;
                ++p_;
                space();
            }
        }
        if (hasDuplicateName(mark))
            return false;
        const auto count = static_cast<std::uint32_t>((pending_.size() - mark) / 2);
        out = t_.add(JsonTree::Kind::Object, JsonTree::Text::Plain, count, link(mark));
        return true;
    }

    std::string_view nameAt(std::uint32_t node) const {
        const JsonTree::Node& n = t_.nodes_[node];
        return {begin_ + n.data, n.count()};
    }

    bool hasDuplicateName(std::size_t mark) {
        const std::size_t count = (pending_.size() - mark) / 2;
        if (count <= 16) {
            for (std::size_t i = 0; i < count; ++i)
                for (std::size_t j = i + 1; j < count; ++j)
                    if (nameAt(pending_[mark + 2 * i]) == nameAt(pending_[mark + 2 * j]))
                        return true;
            return false;
        }
        names_.clear();
        for (std::size_t i = 0; i < count; ++i)
            names_.push_back(nameAt(pending_[mark + 2 * i]));
        std::sort(names_.begin(), names_.end());
        return std::adjacent_find(names_.begin(), names_.end()) != names_.end();
    }

    JsonTree& t_;
    const char* begin_;
    const char* p_;
    const char* end_;
    std::vector<std::uint32_t> pending_;
    std::vector<std::string_view> names_;
};

std::uint32_t JsonTree::addNumber(double value) {
    numbers_.push_back(value);
    return add(Kind::Number, Text::Plain, 0, static_cast<std::uint32_t>(numbers_.size() - 1));
}

std::uint32_t JsonTree::addHeld(QString text) {
    held_.push_back(std::move(text));
    return add(Kind::String, Text::Held, 0, static_cast<std::uint32_t>(held_.size() - 1));
}

bool JsonTree::read(const QByteArray& text, JsonTree& out) {
    out = JsonTree();
    if (text.size() >= kMaxText)
        return false;
    out.text_ = text;
    // The root is node 0: it is placed first and filled when its members are read.
    out.nodes_.reserve(static_cast<std::size_t>(text.size() / 12) + 1);
    out.links_.reserve(static_cast<std::size_t>(text.size() / 12) + 1);
    out.numbers_.reserve(static_cast<std::size_t>(text.size() / 64) + 1);
    out.add(Kind::Null);
    JsonTextReader reader(out);
    if (!reader.document()) {
        out = JsonTree();
        return false;
    }
    // The root object was added last; it takes node 0's place.
    out.nodes_[0] = out.nodes_.back();
    out.nodes_.pop_back();
    return true;
}

std::uint32_t JsonTree::convert(const QJsonValue& value) {
    switch (value.type()) {
    case QJsonValue::Bool:
        return add(value.toBool() ? Kind::True : Kind::False);
    case QJsonValue::Double:
        return addNumber(value.toDouble());
    case QJsonValue::String:
        return addHeld(value.toString());
    case QJsonValue::Array: {
        const QJsonArray array = value.toArray();
        std::vector<std::uint32_t> entries;
        for (const QJsonValue& v : array)
            entries.push_back(convert(v));
        const auto first = static_cast<std::uint32_t>(links_.size());
        links_.insert(links_.end(), entries.begin(), entries.end());
        return add(Kind::Array, Text::Plain, static_cast<std::uint32_t>(entries.size()), first);
    }
    case QJsonValue::Object: {
        const QJsonObject object = value.toObject();
        std::vector<std::uint32_t> entries;
        for (auto it = object.begin(); it != object.end(); ++it) {
            entries.push_back(addHeld(it.key()));
            entries.push_back(convert(it.value()));
        }
        const auto first = static_cast<std::uint32_t>(links_.size());
        links_.insert(links_.end(), entries.begin(), entries.end());
        return add(Kind::Object, Text::Plain, static_cast<std::uint32_t>(entries.size() / 2),
                   first);
    }
    default:
        return add(Kind::Null);
    }
}

JsonTree JsonTree::fromQt(const QJsonValue& root) {
    JsonTree tree;
    tree.add(Kind::Null);
    tree.convert(root);
    tree.nodes_[0] = tree.nodes_.back();
    tree.nodes_.pop_back();
    return tree;
}

bool JsonTree::sameName(const Node& key, const QString& name, bool asciiName) const {
    if (key.text() == Text::Held)
        return held_[key.data] == name;
    const char* p = text_.constData() + key.data;
    // A name of plain ASCII matches only the same bytes; any other compares as text.
    if (!asciiName)
        return QString::fromUtf8(p, key.count()) == name;
    if (key.count() != name.size())
        return false;
    const QChar* c = name.constData();
    for (std::uint32_t i = 0; i < key.count(); ++i)
        if (static_cast<unsigned char>(p[i]) != c[i].unicode())
            return false;
    return true;
}

bool JsonValue::isNull() const {
    return tree_ && tree_->nodes_[node_].kind() == JsonTree::Kind::Null;
}

bool JsonValue::isBool() const {
    return tree_ && (tree_->nodes_[node_].kind() == JsonTree::Kind::True ||
                     tree_->nodes_[node_].kind() == JsonTree::Kind::False);
}

bool JsonValue::isDouble() const {
    return tree_ && tree_->nodes_[node_].kind() == JsonTree::Kind::Number;
}

bool JsonValue::isString() const {
    return tree_ && tree_->nodes_[node_].kind() == JsonTree::Kind::String;
}

bool JsonValue::isArray() const {
    return tree_ && tree_->nodes_[node_].kind() == JsonTree::Kind::Array;
}

bool JsonValue::isObject() const {
    return tree_ && tree_->nodes_[node_].kind() == JsonTree::Kind::Object;
}

bool JsonValue::toBool() const {
    return tree_ && tree_->nodes_[node_].kind() == JsonTree::Kind::True;
}

double JsonValue::toDouble() const {
    return isDouble() ? tree_->numbers_[tree_->nodes_[node_].data] : 0.0;
}

QString JsonValue::toString() const {
    if (!isString())
        return {};
    const JsonTree::Node& n = tree_->nodes_[node_];
    if (n.text() == JsonTree::Text::Held)
        return tree_->held_[n.data];
    const char* p = tree_->text_.constData() + n.data;
    if (n.text() == JsonTree::Text::Plain)
        return QString::fromUtf8(p, n.count());
    // The reader let through only escapes it can decode and no surrogates.
    QString out;
    out.reserve(n.count());
    const char* end = p + n.count();
    while (p != end) {
        const char* run = p;
        while (p != end && *p != '\\')
            ++p;
        if (p != run)
            out += QString::fromUtf8(run, p - run);
        if (p == end)
            break;
        const char e = p[1];
        p += 2;
        switch (e) {
        case 'b':
            out += u'\b';
            break;
        case 'f':
            out += u'\f';
            break;
        case 'n':
            out += u'\n';
            break;
        case 'r':
            out += u'\r';
            break;
        case 't':
            out += u'\t';
            break;
        case 'u':
            out += QChar(static_cast<char16_t>(hex4(p)));
            p += 4;
            break;
        default:
            out += QLatin1Char(e);
            break;
        }
    }
    return out;
}

qsizetype JsonValue::size() const {
    return isArray() || isObject() ? tree_->nodes_[node_].count() : 0;
}

JsonValue JsonValue::at(qsizetype index) const {
    if (!isArray() || index < 0 || index >= size())
        return {};
    const JsonTree::Node& n = tree_->nodes_[node_];
    return JsonValue(tree_, tree_->links_[n.data + static_cast<std::size_t>(index)]);
}

JsonName::JsonName(const QString& name) : text_(name) {
    isAscii_ = std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x80; });
    if (isAscii_)
        ascii_ = name.toLatin1();
}

JsonValue JsonValue::value(const QString& name) const {
    std::uint32_t next = 0;
    return value(JsonName(name), next);
}

JsonValue JsonValue::value(const JsonName& name, std::uint32_t& next) const {
    if (tree_ == nullptr || tree_->nodes_[node_].kind() != JsonTree::Kind::Object)
        return {};
    const JsonTree& tree = *tree_;
    const JsonTree::Node& n = tree.nodes_[node_];
    const std::uint32_t* links = tree.links_.data() + n.data;
    const char* text = tree.text_.constData();
    const char* bytes = name.ascii_.constData();
    const auto length = static_cast<std::uint32_t>(name.ascii_.size());
    const std::uint32_t count = n.count();
    std::uint32_t member = next < count ? next : 0;
    for (std::uint32_t tried = 0; tried < count; ++tried) {
        const JsonTree::Node& key = tree.nodes_[links[2 * std::size_t(member)]];
        const bool same =
            name.isAscii_ && key.text() != JsonTree::Text::Held
                ? key.count() == length && std::memcmp(text + key.data, bytes, length) == 0
                : tree.sameName(key, name.text_, name.isAscii_);
        if (same) {
            next = member + 1;
            return JsonValue(tree_, links[2 * std::size_t(member) + 1]);
        }
        member = member + 1 < count ? member + 1 : 0;
    }
    return {};
}

} // namespace tavik
