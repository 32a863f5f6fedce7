// A macro: what the user did to the text, step by step, and the bytes it is kept in.
#pragma once

#include <QByteArray>
#include <QList>
#include <optional>

namespace control {

inline constexpr int mostRepeats = 1'000'000;

// One thing done: a numbered command, or text typed.
struct Step
{
    int command = 0; // 0 for text
    QByteArray text; // UTF-8; line breaks and tabs stand for their keys
    int times = 1; // up to mostRepeats

    bool operator==(const Step &) const = default;
};

using Macro = QList<Step>;

inline constexpr qsizetype mostMacroSteps = 1'000'000;
inline constexpr qsizetype mostMacroBytes = 16 << 20;

// The commands that ask the user something or show a choice; neither repeated nor recorded.
bool opensWindow(int command);

// Undo and redo cannot stand in a macro either: what is played is undone as a whole, and so is what it did.
bool standsInMacro(int command);

// The slot that a command plays; -1 for one that plays none.
int slotPlayedBy(int command);

// How often the user acted: every letter counts.
qsizetype strokesIn(const Macro &macro);

// The same with pieces of text that follow one another made into one.
Macro withTextJoined(const Macro &macro);

// The bytes of a macro; they say themselves where they end. Empty for an empty macro, and for one that
// macroOf would not take.
QByteArray bytesOf(const Macro &macro);

// What the bytes begin with; whatever stands behind its end does not matter. Nothing when they are no macro:
// cut off, damaged, of too many steps, or with a command that cannot stand in one.
std::optional<Macro> macroOf(QByteArrayView bytes);

} // namespace control
