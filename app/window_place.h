// Where the main window stands on the screen, and how its bars lie, from one run to the next.
#pragma once

#include "platform/result.h"

#include <QSize>

class QMainWindow;

namespace settings {
class SettingsStore;
}

namespace app {

// Less than that shows nothing of use.
QSize leastSize();

// As it was left; in the middle where it was never shown before. number: which of the user's windows this is,
// from 1 on; every further one stands beside the one before.
void restorePlace(QMainWindow &window, const settings::SettingsStore &settings, int number);

// Fails when the settings cannot be written.
platform::Result<void> rememberPlace(const QMainWindow &window, settings::SettingsStore &settings);

} // namespace app
