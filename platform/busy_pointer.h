// The busy pointer, for as long as it lives.
#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace platform {

class BusyPointer
{
public:
    // Over work that may turn out to be little: shown says whether it is worth it.
    explicit BusyPointer(bool shown = true) : shown_(shown)
    {
        if (shown_)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~BusyPointer()
    {
        if (shown_)
            QGuiApplication::restoreOverrideCursor();
    }
    Q_DISABLE_COPY_MOVE(BusyPointer)

private:
    bool shown_;
};

} // namespace platform
