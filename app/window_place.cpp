#include "app/window_place.h"

#include "platform/system/settings_store.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

namespace app {

namespace {

constexpr QSize firstSize(1024, 720); // pixels, before anybody chose another
constexpr QSize frameAllowance(16, 64); // what a window manager may put around the window
constexpr int windowStep = 32; // pixels from one window to the next

QString barsKey() { return QStringLiteral("window/bars"); }
QString placeKey() { return QStringLiteral("window/geometry"); }

// Every further window a step down and to the right, round and round, so that none hides the one before.
void standBeside(QMainWindow &window, int others)
{
    const QRect room = window.screen()->availableGeometry();
    const QSize span = (room.size() - window.size() - frameAllowance).expandedTo({1, 1});
    const QPoint from = window.pos() - room.topLeft();
    window.move(room.topLeft()
                + QPoint((from.x() + others * windowStep) % span.width(),
                         (from.y() + others * windowStep) % span.height()));
}

} // namespace

QSize leastSize() { return {420, 300}; }

void restorePlace(QMainWindow &window, const settings::SettingsStore &settings, int number)
{
    window.restoreState(settings.blob(barsKey()));
    if (!window.restoreGeometry(settings.blob(placeKey()))) {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        window.resize(firstSize.boundedTo(screen.size() - frameAllowance));
        window.move(screen.center() - window.rect().center());
    }
    if (number > 1 && !window.isMaximized() && !window.isFullScreen())
        standBeside(window, number - 1);
}

platform::Result<void> rememberPlace(const QMainWindow &window, settings::SettingsStore &settings)
{
    settings.setBlob(placeKey(), window.saveGeometry());
    settings.setBlob(barsKey(), window.saveState());
    return settings.flush();
}

} // namespace app
