#include "app/file_drop.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace app {

namespace {

QStringList localPaths(const QMimeData &data)
{
    QStringList paths;
    for (const QUrl &url : data.urls())
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    return paths;
}

} // namespace

FileDrop::FileDrop(QWidget &window, std::function<void(const QStringList &)> dropped)
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
    const QStringList paths = localPaths(*event.mimeData());
    if (paths.isEmpty())
        return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (event.type() == QEvent::Drop)
        QTimer::singleShot(0, this, [this, paths] { dropped_(paths); });
    return true;
}

} // namespace app
