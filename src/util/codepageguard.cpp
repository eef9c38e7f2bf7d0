#include "codepageguard.h"

#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/accessiblenames.h"
#include "util/cp1252guard.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace tavik {

namespace {

QString captionName(const QLabel* caption) {
    QString name = WithoutAccessKey(caption->text()).trimmed();
    if (name.endsWith(u':'))
        name.chop(1);
    return name;
}

} // namespace

CodePageGuard::CodePageGuard(QWidget* window, const Language& language)
    : QObject(window), language_(language), note_(new QLabel(window)),
      closest_(new QPushButton(window)) {
    note_->setObjectName(QStringLiteral("lblCodePage"));
    note_->setWordWrap(true);
    note_->setStyleSheet(QStringLiteral("color: #c00000;"));
    note_->hide();
    closest_->setObjectName(QStringLiteral("cmdClosest"));
    closest_->hide();
    connect(closest_, &QPushButton::clicked, this, &CodePageGuard::replaceWithClosest);
}

void CodePageGuard::watchBox(QWidget* box, QLabel* caption) {
    Source source;
    source.name = [caption] { return captionName(caption); };
    if (auto* line = qobject_cast<QLineEdit*>(box)) {
        source.texts = [line] { return QStringList{line->text()}; };
        source.setTexts = [line](const QStringList& texts) { line->setText(texts.value(0)); };
        connect(line, &QLineEdit::textChanged, this, &CodePageGuard::refresh);
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(box)) {
        source.texts = [plain] { return QStringList{plain->toPlainText()}; };
        source.setTexts = [plain](const QStringList& texts) {
            plain->setPlainText(texts.value(0));
        };
        connect(plain, &QPlainTextEdit::textChanged, this, &CodePageGuard::refresh);
    } else {
        return;
    }
    watch(std::move(source));
}

void CodePageGuard::watch(Source source) {
    sources_.append(std::move(source));
    refresh();
}

QString CodePageGuard::problems() const {
    QStringList lines;
    for (const Source& source : sources_) {
        const QStringList texts = source.texts();
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const QList<UnheldCharacter> unheld = FindUnheldCharacters(texts[i]);
            if (unheld.isEmpty())
                continue;
            QStringList named;
            for (const UnheldCharacter& u : unheld)
                named << language_.GetLangString(LangText::CodePageCharacter, u.character,
                                                 UnheldCharacterName(u).section(u' ', 0, 0),
                                                 QString::number(u.position));
            const QString where = source.itemName
                                      ? source.name() + QStringLiteral(" ") + source.itemName(i)
                                      : source.name();
            lines << where + QStringLiteral(": ") + named.join(QStringLiteral(", "));
        }
    }
    return lines.join(u'\n');
}

void CodePageGuard::refresh() {
    const QString found = problems();
    holds_ = found.isEmpty();
    note_->setText(holds_ ? QString()
                          : language_.GetLangString(LangText::CodePageNote) + QStringLiteral("\n") +
                                found);
    note_->setVisible(!holds_);
    closest_->setText(language_.GetLangString(LangText::ClosestLetters));
    closest_->setVisible(!holds_);
    Q_EMIT holdsChanged(holds_);
}

void CodePageGuard::replaceWithClosest() {
    for (const Source& source : std::as_const(sources_)) {
        const QStringList texts = source.texts();
        QStringList closest;
        for (const QString& text : texts)
            closest << ClosestCp1252Text(text);
        if (closest != texts)
            source.setTexts(closest);
    }
    refresh();
}

} // namespace tavik
