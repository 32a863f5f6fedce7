// Texts that show the caret as "|", or the selection as "{...}" with the caret at its end.
#pragma once

#include "platform/control/code_editor.h"

inline void putMarked(control::CodeEditor &editor, QByteArray marked)
{
    const qsizetype caret = marked.indexOf('|');
    const qsizetype start = marked.indexOf('{');
    const qsizetype end = marked.indexOf('}') - 1;
    marked.replace("|", "").replace("{", "").replace("}", "");
    editor.loadText(marked);
    if (start >= 0)
        editor.send(QsciScintillaBase::SCI_SETSEL, ulong(start), long(end));
    else
        editor.send(QsciScintillaBase::SCI_GOTOPOS, ulong(caret));
}

inline QByteArray marked(const control::CodeEditor &editor)
{
    const control::ByteRange selected = editor.selection();
    QByteArray text = editor.text();
    if (selected.length() == 0)
        return text.insert(selected.end, '|');
    return text.insert(selected.end, '}').insert(selected.start, '{');
}
