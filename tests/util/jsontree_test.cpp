// The own JSON reader takes only what QJsonDocument takes, and reads it to the same values;
// what it is not sure of it refuses, so the caller asks Qt.
#include "util/jsontree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

std::uint64_t bitsOf(double d) {
    std::uint64_t bits;
    std::memcpy(&bits, &d, sizeof bits);
    return bits;
}

// Whether the reader's value is Qt's, kind for kind, bit for bit, name for name.
::testing::AssertionResult same(const JsonValue& mine, const QJsonValue& qt, const QString& at) {
    auto differ = [&](const char* what) {
        return ::testing::AssertionFailure() << what << " differs at " << at.toStdString();
    };
    if (mine.isNull() != qt.isNull() || mine.isBool() != qt.isBool() ||
        mine.isDouble() != qt.isDouble() || mine.isString() != qt.isString() ||
        mine.isArray() != qt.isArray() || mine.isObject() != qt.isObject())
        return differ("kind");
    if (mine.toBool() != qt.toBool())
        return differ("Boolean");
    if (bitsOf(mine.toDouble()) != bitsOf(qt.toDouble()))
        return differ("number");
    if (mine.toString() != qt.toString())
        return differ("text");
    if (qt.isArray()) {
        const QJsonArray a = qt.toArray();
        if (mine.size() != a.size())
            return differ("element count");
        for (qsizetype i = 0; i < a.size(); ++i) {
            const auto r = same(mine.at(i), a.at(i), at + QStringLiteral("[%1]").arg(i));
            if (!r)
                return r;
        }
    }
    if (qt.isObject()) {
        const QJsonObject o = qt.toObject();
        if (mine.size() != o.size())
            return differ("member count");
        for (auto it = o.begin(); it != o.end(); ++it) {
            if (!mine.contains(it.key()))
                return differ("member name");
            const auto r = same(mine.value(it.key()), it.value(), at + u'.' + it.key());
            if (!r)
                return r;
        }
    }
    return ::testing::AssertionSuccess();
}

enum class Outcome { Refused, SameAsQt, Differs };

// Reads `text` with both; a text the reader takes must be one Qt takes to the same values.
Outcome compare(const QByteArray& text) {
    JsonTree tree;
    const bool read = JsonTree::read(text, tree);
    if (!read)
        return Outcome::Refused;
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(text, &error);
    if (doc.isNull() || !doc.isObject()) {
        ADD_FAILURE() << "taken, but Qt refuses: " << text.left(200).toStdString();
        return Outcome::Differs;
    }
    const auto r = same(tree.root(), doc.object(), QString());
    EXPECT_TRUE(r) << text.left(200).toStdString();
    return r ? Outcome::SameAsQt : Outcome::Differs;
}

// A dump-like document with every kind of value and escapes in its texts.
QByteArray sample() {
    return QByteArrayLiteral(
        "{\n    \"format\": \"package-index\",\n    \"header\": {\"key_count\": 2, \"text1\": "
        "\"Linie 7 \\u2013 S\xc3\xbc"
        "d\", \"text2\": \"a\\\"b\\\\c\\/d\\b\\f\\n\\r\\t\\u0000\\u00e9\", \"reserved\": "
        "\"000000000000\"},\n    \"keys\": [\n        {\"in_use\": true, \"items\": null, "
        "\"name\": \"INFO\", \"slot\": 0, \"item_count\": -32768},\n        {\"in_use\": false, "
        "\"items\": [ {\"value\": 1.5e3, \"type\": 5}, {\"value\": -0.25, \"bits\": "
        "\"0000000000000000\"}, {\"value\": 9007199254740993}, {\"value\": 1E-7}, {\"value\": "
        "123456789012345678901234567890}, {\"value\": []}, {\"value\": {}} ], \"name\": "
        "\"\xe2\x82\xac\xf0\x9f\x98\x80\", \"slot\": 1}\n    ]\n}\n");
}

} // namespace

TEST(JsonTree, ReadsADocumentToTheValuesQtReads) {
    EXPECT_EQ(compare(sample()), Outcome::SameAsQt);
    JsonTree tree;
    ASSERT_TRUE(JsonTree::read(sample(), tree));
    const JsonValue header = tree.root().value(QStringLiteral("header"));
    EXPECT_EQ(header.value(QStringLiteral("text2")).toString(),
              QStringLiteral("a\"b\\c/d\b\f\n\r\t") + QChar(0) + QChar(0xE9));
    EXPECT_EQ(header.value(QStringLiteral("text1")).toString(),
              QStringLiteral("Linie 7 \u2013 S\u00fcd"));
    const JsonValue items = tree.root().value(QStringLiteral("keys")).at(1).value("items");
    EXPECT_EQ(items.size(), 7);
    EXPECT_EQ(items.at(0).value(QStringLiteral("value")).toDouble(), 1500.0);
    EXPECT_TRUE(items.at(7).isUndefined());
    EXPECT_TRUE(tree.root().value(QStringLiteral("none")).isUndefined());
    EXPECT_FALSE(tree.root().contains(QStringLiteral("none")));
    EXPECT_TRUE(tree.root().contains(QStringLiteral("keys")));
}

TEST(JsonTree, LeavesToQtWhatItIsNotSureOf) {
    const QByteArray cases[] = {
        "{\"a\": 1, \"a\": 2}",          // duplicate names: Qt keeps the last
        "{\"\\u0061\": 1, \"a\": 2}",    // an escaped name
        "{\"a\": -0}",                   // Qt keeps no minus on a zero
        "{\"a\": -0.0e5}",               //
        "{\"a\": \"\\uD83D\\uDE00\"}",   // surrogates
        "{\"a\": \"\\uDE00\"}",          //
        "\xEF\xBB\xBF{\"a\": 1}",        // a byte order mark
        "{\"a\": \"\x01\"}",             // a control character
        "{\"a\": 1e400}",                // beyond a double
        "{\"a\": 1e-400}",               //
        "{\"a\": 1.}",                   // Qt's own leniency
        "{\"a\": 01}",                   //
        "{\"a\": \"\xC0\x80\"}",         // overlong UTF-8
        "{\"a\": \"\xED\xA0\x80\"}",     // a surrogate in UTF-8
        "{\"a\": \"\xF4\x90\x80\x80\"}", // past U+10FFFF
        "{\"a\": \"\xEF\xBF\xBF\"}",     // a noncharacter
        "{\"a\": \"\xC3\"}",             // a cut sequence
        "{\"a\": \"\\x\"}",              // an unknown escape
        "{\"a\": \"\\u12G4\"}",          //
        "[1, 2]",                        // no object
        "\"text\"",                      //
        "{\"a\": 1} x",                  // garbage after the document
        "{\"a\": tru}",                  //
        "{\"a\": 1,}",                   //
        "",                              //
    };
    for (const QByteArray& text : cases) {
        SCOPED_TRACE(text.toStdString());
        JsonTree tree;
        EXPECT_FALSE(JsonTree::read(text, tree));
    }
}

TEST(JsonTree, RefusesEveryCutOfADocument) {
    const QByteArray text = sample();
    int refused = 0;
    for (qsizetype n = 0; n < text.size(); ++n) {
        // Only whitespace may follow the last brace.
        if (compare(text.left(n)) == Outcome::Refused)
            ++refused;
    }
    EXPECT_GE(refused, text.size() - 2);
}

TEST(JsonTree, TakesAChangedDocumentOnlyAsQtDoes) {
    const QByteArray text = sample();
    const char alphabet[] = "{}[]\":,\\ 0123456789-+.eEtrufalsn\x80\xC3\xBF\xED\xF0\x01u";
    QRandomGenerator random(26);
    int taken = 0, refused = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray changed = text;
        const int edits = 1 + random.bounded(3);
        for (int e = 0; e < edits; ++e) {
            const auto at = static_cast<qsizetype>(random.bounded(int(changed.size())));
            const char c = alphabet[random.bounded(int(sizeof alphabet - 1))];
            switch (random.bounded(3)) {
            case 0:
                changed[at] = c;
                break;
            case 1:
                changed.insert(at, c);
                break;
            default:
                changed.remove(at, 1);
                break;
            }
        }
        const Outcome o = compare(changed);
        ASSERT_NE(o, Outcome::Differs);
        (o == Outcome::SameAsQt ? taken : refused)++;
    }
    // Both ways are walked: edits in whitespace and texts keep a document.
    EXPECT_GT(taken, 100);
    EXPECT_GT(refused, 100);
}

TEST(JsonTree, ReadsNumbersAsQtDoes) {
    QRandomGenerator random(1252);
    QByteArray text = "{\"n\": [";
    for (int i = 0; i < 3000; ++i) {
        if (i)
            text += ", ";
        const double d = std::ldexp(random.generateDouble() - 0.5, random.bounded(-60, 60));
        switch (i % 4) {
        case 0:
            text += QByteArray::number(random.bounded(-100000000, 100000000));
            break;
        case 1:
            text += QByteArray::number(d, 'g', 17);
            break;
        case 2:
            text += QByteArray::number(d, 'e', random.bounded(1, 25));
            break;
        default:
            text += QByteArray::number(random.generate64() >> random.bounded(0, 63));
            break;
        }
    }
    text += "]}";
    EXPECT_EQ(compare(text), Outcome::SameAsQt);
}

TEST(JsonTree, HostileTextsAreReadOrRefusedWithoutHarm) {
    // Nesting deeper than any dump is Qt's to judge.
    JsonTree tree;
    EXPECT_FALSE(JsonTree::read(
        "{\"a\": " + QByteArray(200000, '[') + "1" + QByteArray(200000, ']') + "}", tree));
    QByteArray nested = "{\"a\": ";
    for (int i = 0; i < 30; ++i)
        nested += "{\"a\": [";
    nested += "1";
    for (int i = 0; i < 30; ++i)
        nested += "]}";
    nested += "}";
    EXPECT_EQ(compare(nested), Outcome::SameAsQt);
    // A huge text and an object of very many members.
    EXPECT_EQ(compare("{\"a\": \"" + QByteArray(8 << 20, 'x') + "\\n\"}"), Outcome::SameAsQt);
    QByteArray many = "{";
    for (int i = 0; i < 3000; ++i)
        many += (i ? ",\"" : "\"") + QByteArray::number(i) + "\":" + QByteArray::number(i);
    EXPECT_EQ(compare(many + "}"), Outcome::SameAsQt);
    EXPECT_FALSE(JsonTree::read(many + ",\"2999\":1}", tree));
    // Cut in the middle of a text, an escape, a number, a name.
    for (const char* cut : {"{\"a\": \"abc", "{\"a\": \"\\u00", "{\"a\": 12", "{\"ab", "{\"a\" "})
        EXPECT_FALSE(JsonTree::read(cut, tree)) << cut;
}

TEST(JsonTree, AQtDocumentReadsTheSame) {
    const QJsonDocument doc = QJsonDocument::fromJson(sample());
    ASSERT_TRUE(doc.isObject());
    const JsonTree tree = JsonTree::fromQt(doc.object());
    EXPECT_TRUE(same(tree.root(), doc.object(), QString()));
    // Names Qt read from escapes are found by their text.
    const QJsonDocument escaped =
        QJsonDocument::fromJson("{\"\\u00e9t\\u00e9\": 1, \"a\": 2, \"a\": 3}");
    const JsonTree fromQt = JsonTree::fromQt(escaped.object());
    EXPECT_EQ(fromQt.root().value(QStringLiteral("\u00e9t\u00e9")).toDouble(), 1.0);
    EXPECT_EQ(fromQt.root().value(QStringLiteral("a")).toDouble(), 3.0);
}
