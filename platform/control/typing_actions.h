// Commands about what is typed along for the user.
#pragma once

#include "platform/control/editor_properties.h"

namespace control {

class CodeEditor;

// Shows the names that fit at the caret; false when none is known.
bool completeName(CodeEditor &editor);
// Writes the closing tag of the innermost element open at the caret; false when none is.
bool closeElement(CodeEditor &editor);

// A choice of the user's: kept.
bool toggleTextDragging(CodeEditor &editor);
bool toggleNameOffering(CodeEditor &editor);
bool toggleCloseOnSlash(CodeEditor &editor);
bool toggleCloseOnBracket(CodeEditor &editor);
bool toggleRenaming(CodeEditor &editor);
bool toggleAutoIndent(CodeEditor &editor);

} // namespace control
