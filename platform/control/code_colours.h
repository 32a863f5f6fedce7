// Colours of programming languages, for a code editor whose text is a piece of a program instead of markup.
#pragma once

#include <QObject>
#include <QString>

namespace control {

class CodeEditor;
struct CodeLanguage;

class CodeColours : public QObject
{
public:
    // Belongs to the editor. Until a language is chosen, the editor looks as it does by itself.
    explicit CodeColours(CodeEditor &editor);

    // "C/C++", "Basic", "Java", "Pascal", "SQL", "HTML", "XML"; anything else turns colouring off.
    void setLanguage(const QString &name);

private:
    void dress();

    CodeEditor &editor_;
    const CodeLanguage *language_ = nullptr; // null for markup and plain text
};

} // namespace control
