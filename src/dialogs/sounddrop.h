#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

class QMimeData;
class QWidget;

namespace tavik {

// Lets sound files be dropped onto a widget from a file manager: a drag that carries local
// files of the installed formats is accepted, and a drop hands those files on. Lists take
// the drop on their viewport. The watcher belongs to the widget it watches.
class SoundDrop : public QObject {
    Q_OBJECT
public:
    // `accepting` tells whether drops are taken at the moment; none means always.
    SoundDrop(QWidget* target, QStringList installedFormats, std::function<bool()> accepting = {});

    // The files of a drag that a drop would hand on, in the order they were dragged.
    QStringList SoundFiles(const QMimeData* data) const;

Q_SIGNALS:
    void filesDropped(const QStringList& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QStringList formats_;
    std::function<bool()> accepting_;
};

} // namespace tavik
