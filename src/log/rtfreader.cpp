#include "rtfdocument.h"

#include "util/cp1252.h"

#include <algorithm>
#include <vector>

namespace tavik {

namespace {

enum class Destination { Text, ColorTable, Skip };

struct GroupState {
    Destination destination = Destination::Text;
    int color = 0;
    int highlight = 0;
    int unicodeSkip = 1;
};

// Deeper groups are read with their outer group's state rather than tracked.
constexpr std::size_t kMaxDepth = 256;

bool isSkippedDestination(QStringView word) {
    static const QStringList skipped = {QStringLiteral("fonttbl"),
                                        QStringLiteral("stylesheet"),
                                        QStringLiteral("info"),
                                        QStringLiteral("pict"),
                                        QStringLiteral("object"),
                                        QStringLiteral("header"),
                                        QStringLiteral("footer"),
                                        QStringLiteral("listtable"),
                                        QStringLiteral("listoverridetable"),
                                        QStringLiteral("generator"),
                                        QStringLiteral("themedata"),
                                        QStringLiteral("rsidtbl"),
                                        QStringLiteral("latentstyles"),
                                        QStringLiteral("fldinst"),
                                        QStringLiteral("datastore")};
    return skipped.contains(word);
}

class Reader {
public:
    explicit Reader(const QString& rtf) : in_(rtf) {}

    RtfDocument read() {
        stack_.push_back({});
        const qsizetype n = in_.size();
        while (pos_ < n) {
            const QChar ch = in_[pos_++];
            if (ch == u'{') {
                if (stack_.size() < kMaxDepth)
                    stack_.push_back(stack_.back());
                else
                    ++untracked_;
            } else if (ch == u'}') {
                closeGroup();
            } else if (ch == u'\\') {
                controlSequence();
            } else if (ch == u'\r' || ch == u'\n') {
                continue;
            } else if (state().destination == Destination::ColorTable) {
                if (ch == u';')
                    endColorEntry();
            } else {
                put(ch);
            }
        }
        return std::move(doc_);
    }

private:
    GroupState& state() { return stack_.back(); }

    void closeGroup() {
        if (untracked_ > 0) {
            --untracked_;
            return;
        }
        if (stack_.size() > 1)
            stack_.pop_back();
    }

    void controlSequence() {
        if (pos_ >= in_.size())
            return;
        const QChar ch = in_[pos_];
        if (isAsciiLetter(ch)) {
            const qsizetype start = pos_;
            while (pos_ < in_.size() && isAsciiLetter(in_[pos_]) && pos_ - start < 32)
                ++pos_;
            const QStringView word = QStringView(in_).mid(start, pos_ - start);
            bool hasParam = false;
            bool negative = false;
            long long param = 0;
            if (pos_ < in_.size() && in_[pos_] == u'-') {
                negative = true;
                ++pos_;
            }
            int digits = 0;
            while (pos_ < in_.size() && in_[pos_].isDigit() && in_[pos_].unicode() < 0x80) {
                if (digits++ < 10)
                    param = param * 10 + (in_[pos_].unicode() - u'0');
                hasParam = true;
                ++pos_;
            }
            if (negative)
                param = -param;
            if (pos_ < in_.size() && in_[pos_] == u' ')
                ++pos_;
            controlWord(word, hasParam ? param : -1, hasParam);
            return;
        }
        ++pos_;
        switch (ch.unicode()) {
        case u'\\':
        case u'{':
        case u'}':
            put(ch);
            break;
        case u'\'': {
            bool ok = false;
            const int byte = in_.mid(pos_, 2).toInt(&ok, 16);
            pos_ = std::min(pos_ + 2, in_.size());
            if (ok && byte >= 0 && byte <= 0xFF) {
                const char c = static_cast<char>(byte);
                put(fromCp1252(&c, 1).at(0));
            }
            break;
        }
        case u'*':
            state().destination = Destination::Skip;
            break;
        case u'~':
            put(QChar(0xA0));
            break;
        case u'_':
            put(QChar(u'-'));
            break;
        case u'\r':
        case u'\n':
            paragraph();
            break;
        default:
            break;
        }
    }

    static bool isAsciiLetter(QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
    }

    static int clampParam(long long v, bool hasParam) {
        if (!hasParam)
            return 0;
        return static_cast<int>(std::clamp<long long>(v, -100000, 100000));
    }

    void controlWord(QStringView word, long long param, bool hasParam) {
        GroupState& s = state();
        if (word == u"colortbl") {
            s.destination = Destination::ColorTable;
            entry_ = {};
            return;
        }
        if (isSkippedDestination(word)) {
            s.destination = Destination::Skip;
            return;
        }
        if (s.destination == Destination::ColorTable) {
            const int v = std::clamp(clampParam(param, hasParam), 0, 255);
            if (word == u"red")
                entry_.red = v;
            else if (word == u"green")
                entry_.green = v;
            else if (word == u"blue")
                entry_.blue = v;
            else
                return;
            entry_.set = true;
            return;
        }
        if (word == u"par" || word == u"line") {
            paragraph();
        } else if (word == u"tab") {
            put(QChar(u'\t'));
        } else if (word == u"cf") {
            s.color = clampParam(param, hasParam);
        } else if (word == u"highlight" || word == u"cb") {
            s.highlight = clampParam(param, hasParam);
        } else if (word == u"plain") {
            s.color = 0;
            s.highlight = 0;
        } else if (word == u"uc") {
            s.unicodeSkip = std::clamp(clampParam(param, hasParam), 0, 8);
        } else if (word == u"u" && hasParam) {
            const int code = clampParam(param, true);
            put(QChar(static_cast<char16_t>(code < 0 ? code + 65536 : code)));
            pendingSkip_ = s.unicodeSkip;
        } else if (word == u"emdash") {
            put(QChar(0x2014));
        } else if (word == u"endash") {
            put(QChar(0x2013));
        } else if (word == u"lquote") {
            put(QChar(0x2018));
        } else if (word == u"rquote") {
            put(QChar(0x2019));
        } else if (word == u"ldblquote") {
            put(QChar(0x201C));
        } else if (word == u"rdblquote") {
            put(QChar(0x201D));
        } else if (word == u"bullet") {
            put(QChar(0x2022));
        }
    }

    void endColorEntry() {
        colors_.append(entry_.set ? static_cast<int>(WinRgb(entry_.red, entry_.green, entry_.blue))
                                  : NoColor);
        entry_ = {};
    }

    int colorAt(int index) const {
        // Index 0 and indexes past the table are the box's own colour.
        if (index <= 0 || index >= colors_.size())
            return NoColor;
        return colors_[index];
    }

    void paragraph() {
        if (state().destination != Destination::Text)
            return;
        pendingSkip_ = 0;
        doc_.paragraphs.append(RtfParagraph{});
    }

    void put(QChar ch) {
        const GroupState& s = state();
        if (s.destination != Destination::Text)
            return;
        if (pendingSkip_ > 0) {
            --pendingSkip_;
            return;
        }
        // A line break that arrives as a character still ends the paragraph.
        if (ch == u'\r' || ch == u'\n' || ch == QChar::ParagraphSeparator) {
            paragraph();
            return;
        }
        const int color = colorAt(s.color);
        const int highlight = colorAt(s.highlight);
        RtfParagraph& para = doc_.paragraphs.last();
        if (para.isEmpty() || para.last().color != color || para.last().highlight != highlight)
            para.append(RtfRun{QString(), color, highlight});
        para.last().text += ch;
    }

    struct Entry {
        int red = 0, green = 0, blue = 0;
        bool set = false;
    };

    const QString& in_;
    qsizetype pos_ = 0;
    std::vector<GroupState> stack_;
    std::size_t untracked_ = 0;
    int pendingSkip_ = 0;
    Entry entry_;
    // The colour table as written: entry 0 is the auto colour.
    QList<int> colors_;
    RtfDocument doc_;
};

} // namespace

RtfDocument ParseRtf(const QString& rtf) {
    RtfDocument doc = Reader(rtf).read();
    return doc;
}

} // namespace tavik
