#include "dialogs/sounddrop.h"

#include "dialogs/importformats.h"

#include <QAbstractScrollArea>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace tavik {

SoundDrop::SoundDrop(QWidget* target, QStringList installedFormats, std::function<bool()> accepting)
    : QObject(target), formats_(std::move(installedFormats)), accepting_(std::move(accepting)) {
    QWidget* surface = target;
    if (auto* area = qobject_cast<QAbstractScrollArea*>(target))
        surface = area->viewport();
    surface->setAcceptDrops(true);
    surface->installEventFilter(this);
}

QStringList SoundDrop::SoundFiles(const QMimeData* data) const {
    QStringList files;
    if (!data || !data->hasUrls())
        return files;
    for (const QUrl& url : data->urls()) {
        if (!url.isLocalFile())
            continue;
        const QString path = QFileInfo(url.toLocalFile()).absoluteFilePath();
        if (QFileInfo(path).isFile() && IsInstalledFormat(path, formats_))
            files << QDir::toNativeSeparators(path);
    }
    return files;
}

bool SoundDrop::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto* drag = static_cast<QDragMoveEvent*>(event);
        if ((!accepting_ || accepting_()) && !SoundFiles(drag->mimeData()).isEmpty())
            drag->acceptProposedAction();
        else
            drag->ignore();
        return true;
    }
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        const QStringList files =
            (!accepting_ || accepting_()) ? SoundFiles(drop->mimeData()) : QStringList();
        if (files.isEmpty()) {
            drop->ignore();
            return true;
        }
        drop->acceptProposedAction();
        Q_EMIT filesDropped(files);
        return true;
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace tavik
