#include "platform/control/text_window.h"

#include "platform/control/code_editor.h"

#include <algorithm>

namespace control {

TextWindow textWindow(const CodeEditor &editor, long start, long end)
{
    start = std::max(0L, start);
    end = std::min(editor.send(QsciScintillaBase::SCI_GETLENGTH), end);
    if (start >= end)
        return {{}, start};
    const long bytes = editor.send(QsciScintillaBase::SCI_GETRANGEPOINTER, ulong(start), end - start);
    // The engine hands pointers out as numbers. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return {QByteArrayView(reinterpret_cast<const char *>(bytes), end - start), start};
}

TextWindow windowAround(const CodeEditor &editor, long position, long reach)
{
    return textWindow(editor, position - reach, position + reach);
}

} // namespace control
