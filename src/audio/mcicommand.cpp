#include "mcicommand.h"

#include "audio/mcierrors.h"

#include <QVarLengthArray>

namespace tavik {

namespace {

// Splits at blanks; a quoted part is one word without its quotes. A word's characters are
// copied in runs between quotes and blanks, not one by one: every command sent is parsed.
QStringList tokenize(QStringView text, int& error) {
    QStringList words;
    // A command has a few words; one allocation holds them.
    words.reserve(6);
    QString current;
    bool quoted = false;
    bool inWord = false;
    qsizetype run = 0; // where the characters not yet in `current` start
    const auto takeRun = [&](qsizetype end) {
        if (end > run)
            current += text.mid(run, end - run);
        run = end + 1;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'"') {
            takeRun(i);
            quoted = !quoted;
            inWord = true;
        } else if (!quoted && (c == u' ' || c == u'\t')) {
            takeRun(i);
            if (inWord)
                words << current;
            current.clear();
            inWord = false;
        } else {
            inWord = true;
        }
    }
    takeRun(text.size());
    if (quoted)
        error = mci::NoClosingQuote;
    if (inWord)
        words << current;
    return words;
}

QString unquote(QString path) {
    path = path.trimmed();
    if (path.size() >= 2 && path.startsWith(u'"') && path.endsWith(u'"'))
        return path.mid(1, path.size() - 2);
    return path;
}

MciCommand parseOpen(const QString& rest) {
    MciCommand command;
    command.verb = QStringLiteral("open");
    QString element = rest;
    // From the right: "alias A", then "type T"; what is left is the element.
    auto takeLast = [&element](const QString& keyword, QString& value) {
        const QString trimmed = element.trimmed();
        const qsizetype lastBlank = trimmed.lastIndexOf(u' ');
        if (lastBlank < 0)
            return;
        const QString before = trimmed.left(lastBlank).trimmed();
        const qsizetype keywordAt = before.lastIndexOf(u' ') + 1;
        if (before.mid(keywordAt).compare(keyword, Qt::CaseInsensitive) != 0)
            return;
        value = trimmed.mid(lastBlank + 1);
        element = before.left(keywordAt);
    };
    takeLast(QStringLiteral("alias"), command.device);
    takeLast(QStringLiteral("type"), command.type);
    command.path = unquote(element);
    if (command.path.isEmpty())
        command.error = mci::MissingDeviceName;
    if (command.device.isEmpty())
        command.device = command.path;
    return command;
}

// The words of the program's own commands in lower case, shared rather than copied for every
// command: a load sends several per sound. `word` is plain ASCII.
const QString* sharedWord(QStringView word) {
    static const QString kWords[] = {
        QStringLiteral("close"),  QStringLiteral("play"),     QStringLiteral("stop"),
        QStringLiteral("seek"),   QStringLiteral("set"),      QStringLiteral("status"),
        QStringLiteral("time"),   QStringLiteral("format"),   QStringLiteral("milliseconds"),
        QStringLiteral("length"), QStringLiteral("position"), QStringLiteral("mode"),
        QStringLiteral("to"),     QStringLiteral("start"),    QStringLiteral("end")};
    constexpr qsizetype kLongest = 12;
    if (word.size() > kLongest)
        return nullptr;
    // Lower case in place of a case-blind comparison with each word.
    char16_t lower[kLongest];
    for (qsizetype i = 0; i < word.size(); ++i) {
        const char16_t c = word[i].unicode();
        lower[i] = c >= u'A' && c <= u'Z' ? char16_t(c + (u'a' - u'A')) : c;
    }
    const QStringView folded(lower, word.size());
    for (const QString& known : kWords)
        if (known.size() == folded.size() && QStringView(known) == folded)
            return &known;
    return nullptr;
}

QString lowerWord(QStringView word) {
    const QString* shared = sharedWord(word);
    return shared ? *shared : word.toString().toLower();
}

// A command of printable ASCII without quotes, read as parseMciCommand reads any other but
// without a copy of each part: the verb and the words a program sends are shared texts.
// False for anything else (open, a command without its device), which the full reading takes.
bool parsePlain(QStringView text, MciCommand& command) {
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'"' || u < u' ' || u > u'~')
            return false;
    }
    QVarLengthArray<QStringView, 8> tokens;
    for (qsizetype i = 0; i < text.size();) {
        while (i < text.size() && text[i] == u' ')
            ++i;
        const qsizetype start = i;
        while (i < text.size() && text[i] != u' ')
            ++i;
        if (i > start)
            tokens.append(text.mid(start, i - start));
    }
    if (tokens.size() < 2 || tokens[0].compare(u"open", Qt::CaseInsensitive) == 0)
        return false;
    command.verb = lowerWord(tokens[0]);
    command.device = tokens[1].toString();
    command.words.reserve(tokens.size() - 2);
    for (qsizetype i = 2; i < tokens.size(); ++i)
        command.words.append(lowerWord(tokens[i]));
    return true;
}

} // namespace

MciCommand parseMciCommand(const QString& text) {
    if (MciCommand plain; parsePlain(text, plain))
        return plain;
    const QStringView trimmed = QStringView(text).trimmed();
    const qsizetype blank = trimmed.indexOf(u' ');
    const QString verb = (blank < 0 ? trimmed : trimmed.left(blank)).toString().toLower();
    const QStringView rest = blank < 0 ? QStringView() : trimmed.mid(blank + 1);
    if (verb == u"open")
        return parseOpen(rest.toString());

    MciCommand command;
    command.verb = verb;
    QStringList words = tokenize(rest, command.error);
    if (words.isEmpty()) {
        if (command.error == 0)
            command.error = verb.isEmpty() ? mci::UnrecognizedCommand : mci::MissingDeviceName;
        return command;
    }
    command.device = words.takeFirst();
    for (QString& word : words)
        word = word.toLower();
    command.words = words;
    return command;
}

} // namespace tavik
