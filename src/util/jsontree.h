#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <cstdint>
#include <vector>

namespace tavik {

class JsonTree;

// A member's name, prepared once for the many look-ups of a dump's fields: a name of plain
// ASCII is compared with the member's bytes in place.
class JsonName {
public:
    JsonName(const QString& name); // NOLINT(google-explicit-constructor): any text names
    const QString& text() const { return text_; }

private:
    friend class JsonValue;
    QString text_;
    QByteArray ascii_;
    bool isAscii_ = false;
};

// One value of a JsonTree, read as a QJsonValue reads: a missing value is none of the kinds,
// its text empty, its number 0. Valid while its tree lives.
class JsonValue {
public:
    JsonValue() = default;

    bool isUndefined() const { return tree_ == nullptr; }
    bool isNull() const;
    bool isBool() const;
    bool isDouble() const;
    bool isString() const;
    bool isArray() const;
    bool isObject() const;

    bool toBool() const;
    double toDouble() const;
    QString toString() const;

    // Elements of an array, members of an object; 0 for anything else.
    qsizetype size() const;
    bool isEmpty() const { return size() == 0; }
    JsonValue at(qsizetype index) const;
    bool contains(const QString& name) const { return value(name).tree_ != nullptr; }
    JsonValue value(const QString& name) const;
    // The same, looking first from member `next` on (names are unique in an object) and
    // leaving `next` after the member found: fields read in the order written find each
    // other at once.
    JsonValue value(const JsonName& name, std::uint32_t& next) const;

private:
    friend class JsonTree;
    JsonValue(const JsonTree* tree, std::uint32_t node) : tree_(tree), node_(node) {}

    const JsonTree* tree_ = nullptr;
    std::uint32_t node_ = 0;
};

// A JSON document held as compact nodes over its own text, for dumps of many megabytes.
// `read` is a strict reader that takes only what QJsonDocument::fromJson takes and reads it to
// the same values: an object at the top, RFC 8259 syntax, UTF-8 checked. Whatever it is not
// sure of it leaves to QJsonDocument (duplicate names, escaped names, surrogates, a minus zero,
// numbers beyond a double, control characters, deep nesting, a byte order mark): then `read`
// fails and the caller parses with Qt, whose messages and values stay the rule, and takes its
// document through `fromQt`.
class JsonTree {
public:
    static bool read(const QByteArray& text, JsonTree& out);
    static JsonTree fromQt(const QJsonValue& root);

    JsonValue root() const { return JsonValue(this, 0); }

private:
    friend class JsonValue;
    friend class JsonTextReader;

    enum class Kind : std::uint8_t { Null, False, True, Number, String, Array, Object };
    // Where a string's text is: plain or escaped UTF-8 in the document's text, or held apart
    // (a text from a Qt document).
    enum class Text : std::uint8_t { Plain, Escaped, Held };
    // Eight bytes a value: a dump of many megabytes has a node for every name and value.
    struct Node {
        // The kind (3 bits), the text (2 bits), and the count (the rest): bytes of a string,
        // elements of an array, members of an object.
        std::uint32_t head = 0;
        // A number's index in `numbers_`, a string's offset in the text or index in `held_`,
        // a container's first entry in `links_`.
        std::uint32_t data = 0;

        Kind kind() const { return static_cast<Kind>(head & 7); }
        Text text() const { return static_cast<Text>((head >> 3) & 3); }
        std::uint32_t count() const { return head >> 5; }
    };
    // Counts and offsets fit the node's bits below this size; a larger text is Qt's to read.
    static constexpr qsizetype kMaxText = qsizetype(1) << 27;

    std::uint32_t add(Kind kind, Text text = Text::Plain, std::uint32_t count = 0,
                      std::uint32_t data = 0) {
        nodes_.push_back(Node{static_cast<std::uint32_t>(kind) |
                                  (static_cast<std::uint32_t>(text) << 3) | (count << 5),
                              data});
        return static_cast<std::uint32_t>(nodes_.size() - 1);
    }
    std::uint32_t addNumber(double value);
    std::uint32_t addHeld(QString text);
    std::uint32_t convert(const QJsonValue& value);
    bool sameName(const Node& key, const QString& name, bool asciiName) const;

    QByteArray text_;
    std::vector<Node> nodes_;
    // Array elements, and object members as name, value, name, value.
    std::vector<std::uint32_t> links_;
    std::vector<QString> held_;
    std::vector<double> numbers_;
};

} // namespace tavik
