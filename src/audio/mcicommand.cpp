#include "mcicommand.h"

#include "audio/mcierrors.h"

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

} // namespace

MciCommand parseMciCommand(const QString& text) {
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
