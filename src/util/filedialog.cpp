#include "util/filedialog.h"

#include <QFileDialog>

namespace tavik {

namespace {

FileDialogHandler& handler() {
    static FileDialogHandler current;
    return current;
}

} // namespace

QString QtFilterFromWindows(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList entries;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        entries << QStringLiteral("%1 (%2)").arg(parts[i], patterns);
    }
    return entries.join(QStringLiteral(";;"));
}

QString ShowOpenDialog(QWidget* owner, const QString& startFolder, const QString& title,
                       const QString& filter) {
    if (handler())
        return handler()({owner, startFolder, title, filter});
    return QFileDialog::getOpenFileName(owner, title, startFolder, QtFilterFromWindows(filter));
}

QString ShowSaveDialog(QWidget* owner, const QString& startFolder, const QString& title,
                       const QString& filter) {
    if (handler())
        return handler()({owner, startFolder, title, filter, true});
    return QFileDialog::getSaveFileName(owner, title, startFolder, QtFilterFromWindows(filter));
}

FileDialogHandler SetFileDialogHandler(FileDialogHandler replacement) {
    FileDialogHandler previous = std::move(handler());
    handler() = std::move(replacement);
    return previous;
}

} // namespace tavik
