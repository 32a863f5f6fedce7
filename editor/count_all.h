// Words, characters and lines of a text, counted in one pass where it stands.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace control {
class CodeEditor;
}

namespace editor {

struct TextCounts
{
    // Pieces between single spaces, empty ones too: two spaces in a row make three words of two. Line breaks
    // and tabs separate nothing. An empty text has none.
    qint64 words = 0;
    // As the user counts them: one for each character, line breaks included, whatever it takes in memory.
    qint64 characters = 0;
    qint64 lines = 0;

    bool operator==(const TextCounts &) const = default;
};

// Lines as the editor numbers them, which are not counted here.
TextCounts countAll(QByteArrayView utf8, qint64 lines);
TextCounts countAll(const control::CodeEditor &editor);

// The title of the message box.
QString countTitle();
// Its text. The counters of characters and lines hold at most 32767; beyond that they stay at 0.
QString countMessage(const TextCounts &counts);
// The true counts as one line.
QString countLine(const TextCounts &counts);

} // namespace editor
