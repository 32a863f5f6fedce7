// The macros between runs: one file a slot, "0.dem" to "9.dem", in the folder "macros".
#pragma once

#include "platform/control/macro_slots.h"
#include "platform/result.h"

#include <QString>
#include <functional>

namespace editor {

// A file's bytes as a slot is given them: with one byte 0 behind them. Fails for what is no regular file, is
// larger than any macro, or cannot be read.
platform::Result<QByteArray> macroFileBytes(const QString &path);

class MacroFiles
{
public:
    // Takes what was skipped and why, one line at a time.
    using Note = std::function<void(const QString &)>;

    // folder is the one that the folder of macros stands in. The slots must outlive the object.
    MacroFiles(const QString &folder, control::MacroSlots &macros, const Note &note);

    // Fills the slots from all names that end in "dem", in the order of the file system. What stands before
    // a name's first "." is the slot; where that is no number, the slot of the name before it, 0 at first.
    void LoadMacros();

    // The slot is emptied by a file that holds no macro; a file that cannot be read leaves it alone.
    void LoadMacroFile(const QString &path, int slot);

    // Makes the folder and writes the slots that are not empty.
    void SaveMacros();

    // Whether a slot holds what was neither read from its file nor written to it.
    bool hasUnsaved() const;

    // Writes over the beginning of an older file, never shortens it: a macro's bytes say where they end. An
    // empty slot writes nothing. False when the file could not be written.
    bool SaveMacroFile(const QString &path, int slot);

private:
    QString folder_;
    control::MacroSlots &macros_;
    control::MacroSlots kept_; // as they stand in their files
    Note note_;
};

} // namespace editor
