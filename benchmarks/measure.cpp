#include "measure.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QWidget>

#include <algorithm>
#include <limits>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#ifdef __linux__
#include <unistd.h>
#endif

namespace bench {

namespace {

constexpr double repeated = 1000; // milliseconds: what takes longer is timed once

// Of this thread, in nanoseconds; zeros where the system does not tell.
struct Turns
{
    qint64 running = 0;
    qint64 waiting = 0; // ready to go on while other threads had the processors
};

Turns turns()
{
#ifdef __linux__
    QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        const QList<QByteArray> fields = file.readAll().split(' ');
        return {fields.value(0).toLongLong(), fields.value(1).toLongLong()};
    }
#endif
    return {};
}

// The system's two clocks are not quite one: what was spent running counts in any case.
qint64 ownTime(qint64 passed, const Turns &before, const Turns &after)
{
    return std::max(passed - (after.waiting - before.waiting), after.running - before.running);
}

// Whether a widget is painted while this is there.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *view) { view->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        painted |= event->type() == QEvent::Paint;
        return false;
    }

    bool painted = false;
};

} // namespace

double milliseconds(const std::function<void()> &step, int runs)
{
    double least = std::numeric_limits<double>::max();
    for (int run = 0; run < runs && (run == 0 || least < repeated); ++run) {
        const Turns before = turns();
        QElapsedTimer timer;
        timer.start();
        step();
        const qint64 passed = timer.nsecsElapsed();
        least = std::min(least, double(ownTime(passed, before, turns())) / 1e6);
    }
    return least;
}

qint64 residentBytes()
{
#ifdef __GLIBC__
    malloc_trim(0); // what is free again but not given back is nobody's use of memory
#endif
#ifdef __linux__
    QFile file(QStringLiteral("/proc/self/statm"));
    if (file.open(QIODevice::ReadOnly))
        return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
#endif
    return 0;
}

void waitUntilIdle()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) { }
}

void paint(QWidget *view)
{
    PaintWatch watch(view);
    QApplication::processEvents();
    if (!watch.painted)
        view->repaint();
}

} // namespace bench
