// Whether the windows are light, dark, or as the desktop has them.
#pragma once

#include <QString>

#include <span>

namespace settings {
class SettingsStore;
}

namespace app {

struct Appearance
{
    enum class Ground
    {
        Desktop,
        Light,
        Dark
    };

    const char *command; // control name of its menu item
    const char *word; // as the settings keep it
    Ground ground;
};

// In the order of the menu.
std::span<const Appearance> appearances();

// What the user chose last; as the desktop where nothing was chosen, or where it cannot be read.
const Appearance &chosenAppearance(const settings::SettingsStore &settings);

// Puts it on every window there is and will be, and remembers it when settings are given.
void putOn(const Appearance &appearance, settings::SettingsStore *settings = nullptr);

} // namespace app
