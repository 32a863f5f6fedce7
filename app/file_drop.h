// Files dropped anywhere on a window, whatever the control under the pointer would make of them.
#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

class QDropEvent;
class QWidget;

namespace app {

class FileDrop : public QObject
{
public:
    // Watches the window and everything in it for as long as this lives. dropped gets the local paths,
    // after the drop is over, so that it may ask questions.
    FileDrop(QWidget &window, std::function<void(const QStringList &)> dropped);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool take(QDropEvent &event);

    QWidget &window_;
    std::function<void(const QStringList &)> dropped_;
};

} // namespace app
