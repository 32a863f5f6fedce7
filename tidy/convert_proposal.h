// What the Convert and Tidy dialog offers at first: what the text is, and the style sheet that it names.
#pragma once

#include "tidy/config_files.h"

#include <QByteArray>
#include <QString>

namespace tidy {

// What the dialog was left with, for the next time. The kinds hold for texts of the same kind only.
struct ConvertChoices
{
    bool made = false; // nothing was converted yet otherwise
    bool transforms = false; // the second job
    bool xmlIsCurrent = true;
    InputKind offered = InputKind::Xml; // what the text was taken for then
    InputKind input = InputKind::Xml;
    OutputKind output = OutputKind::Xml;
    QString files[2]; // the XML file, the XSL file
    QString parameters; // one a line
};

// What a text (UTF-8) is, by what stands before and in its first tag: a page is XHTML where it says so, XML
// is what is no page.
InputKind kindOfText(const QByteArray &text);

// The full path of the first XSL style sheet that instructions before the root element name, found beside the
// document; empty where there is none on this computer.
QString namedStyleSheet(const QByteArray &text, const QString &document);

} // namespace tidy
