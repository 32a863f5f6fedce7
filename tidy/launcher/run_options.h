// The options of one run: both configuration files together, put into the words of a present Tidy and
// reconciled with what the exchange needs.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

namespace launcher {

// Which characters the output may hold as themselves, outside of places where nothing else can stand for
// them.
enum class Alphabet
{
    Unicode,
    Latin1,
    Ascii
};

enum class Output
{
    AsInput, // no output option is set
    Html,
    Xhtml,
    Xml
};

struct RunOptions
{
    QByteArray configuration; // what Tidy gets: one option a line
    Alphabet alphabet = Alphabet::Unicode;
    Output output = Output::AsInput;
    bool namedReferences = false; // characters outside the alphabet are written by name where HTML has one
    bool inputXml = false;
    bool keepsSections = true; // CDATA sections are to stay as they are
    bool keepsComments = true;
    bool keepsWords = true; // no option asks for other characters than the text has
    bool keepsPageWords = true; // nor for other words than a page has
    QByteArray lineEnd; // of the output; empty for Tidy's own choice

    bool writesXml() const { return output == Output::AsInput ? inputXml : output != Output::Html; }
};

// The name by which a present Tidy knows an option (lower case); nothing for what it must not be told:
// options that no longer exist, that name files, and those of the encoding, which the launcher settles.
std::optional<QByteArray> presentName(const QByteArray &name);

// The options of configuration files, where a later one wins on a conflict. What they leave open is chosen
// here: line ends follow the input, and the output is one that can be parsed.
RunOptions reconciledOptions(const QList<QByteArray> &files, QByteArrayView input);

} // namespace launcher
