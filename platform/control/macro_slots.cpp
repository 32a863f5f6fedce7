#include "platform/control/macro_slots.h"

#include <utility>

namespace control {

bool MacroSlots::setMacro(int slot, const QByteArray &bytes)
{
    if (!exists(slot))
        return false;
    const std::optional<Macro> macro = macroOf(bytes);
    slots_[size_t(slot)] = macro ? bytesOf(*macro) : QByteArray();
    return true;
}

namespace {

// Looks through everything that a macro plays, each slot once.
bool reaches(const MacroSlots &macros, const Macro &macro, int slot,
             std::array<bool, MacroSlots::count> &seen)
{
    for (const Step &step : macro) {
        const int played = slotPlayedBy(step.command);
        if (played == slot)
            return true;
        if (played < 0 || std::exchange(seen[size_t(played)], true))
            continue;
        const std::optional<Macro> inner = macroOf(macros.macro(played));
        if (inner && reaches(macros, *inner, slot, seen))
            return true;
    }
    return false;
}

} // namespace

bool plays(const MacroSlots &macros, const Macro &macro, int slot)
{
    std::array<bool, MacroSlots::count> seen{};
    return reaches(macros, macro, slot, seen);
}

} // namespace control
