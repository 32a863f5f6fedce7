// Shows the busy pointer as long as it lives, over work on so much text that somebody could wonder.
#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace control {

class BusyPointer
{
public:
    // Bytes that the work is about.
    explicit BusyPointer(long bytes) : shown_(bytes > muchText)
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
    static constexpr long muchText = 4L * 1024 * 1024;
    bool shown_;
};

} // namespace control
