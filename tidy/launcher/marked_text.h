// A marked-up text as it reads: its characters without blanks and markup, and what lies between them.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <string>
#include <vector>

namespace launcher {

enum class Dialect
{
    Xml,
    Html,
    Xhtml // elements of HTML, written as XML
};

// A run of blanks between two pieces of markup or characters; often none.
struct Blanks
{
    qsizetype begin; // in the markup
    qsizetype end;
    bool exact = false; // each of them counts; else, in HTML, whether there are any, and in XML nothing
    int element = 0; // whose content they are in; of the reader's own use

    qsizetype size() const { return end - begin; }
};

// A tag, or what else is no text; of comments and the like the name is their first characters.
struct Mark
{
    QByteArray name; // in lower case in HTML; led by a slash in end tags
    bool block = false; // HTML: parts the words on both sides whatever the blanks
};

// What lies before a character: blanks, a mark, blanks, and so on.
struct Gap
{
    qsizetype before; // the character
    std::vector<Blanks> blanks; // one more than marks
    std::vector<Mark> marks;
};

struct MarkedText
{
    std::u32string characters; // references are resolved; U+FFFC stands for what is shown in a word's place
    std::vector<qsizetype> places; // of the characters in the markup
    std::vector<Gap> gaps; // only those that hold anything, in order; the last may be before the end
};

// Reads a text (UTF-8), however broken it is. The content of scripts and style sheets is no text.
MarkedText readMarkedText(QByteArrayView markup, Dialect dialect);

} // namespace launcher
