#include "app/file_drop.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace app {

namespace {

QString firstLocalFile(const QMimeData &data)
{
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            return url.toLocalFile();
    }
    return {};
}

} // namespace

FileDrop::FileDrop(QWidget &window, std::function<void(const QString &)> dropped)
    : window_(window), dropped_(std::move(dropped))
{
    window_.setAcceptDrops(true);
    QCoreApplication::instance()->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject *watched, QEvent *event)
{
    const bool ofDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove
        || event->type() == QEvent::Drop;
    if (!ofDrag || !watched->isWidgetType() || static_cast<QWidget *>(watched)->window() != &window_)
        return false;
    return take(static_cast<QDropEvent &>(*event));
}

bool FileDrop::take(QDropEvent &event)
{
    const QString path = firstLocalFile(*event.mimeData());
    if (path.isEmpty())
        return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (event.type() == QEvent::Drop)
        QTimer::singleShot(0, this, [this, path] { dropped_(path); });
    return true;
}

} // namespace app
