// The ten macros of the process, each as the bytes it is kept in.
#pragma once

#include "platform/control/macro.h"

#include <QByteArray>
#include <array>

namespace control {

class MacroSlots
{
public:
    static constexpr int count = 10;

    // Empty when the slot is, or when there is none of that number.
    QByteArray macro(int slot) const { return exists(slot) ? slots_[size_t(slot)] : QByteArray(); }

    // Bytes behind the end of a macro are left away; bytes that are no macro empty the slot. False when
    // there is no slot of that number.
    bool setMacro(int slot, const QByteArray &bytes);

private:
    static bool exists(int slot) { return slot >= 0 && slot < count; }

    std::array<QByteArray, count> slots_;
};

// Whether the macro plays the slot, directly or through the other slots.
bool plays(const MacroSlots &macros, const Macro &macro, int slot);

} // namespace control
