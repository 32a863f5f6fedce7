// From text to the DOM, and the check of the editor's text.
//
// Whoever parses into Document goes through here, so that the tree lets go of the old nodes in time and every
// load has its own identity. The check (the part of CheckDocument) only judges: it leaves Document alone.
#pragma once

#include "document/document_state.h"
#include "document/surroundings.h"

#include <optional>

namespace document {

class Parsing
{
public:
    Parsing(DocumentState &state, const Surroundings &around) : state_(state), around_(around) { }

    // Reads a document file. What cannot be read is reported in a box of the usual form; nothing changes.
    std::optional<files::LoadedText> readFile(const QString &path);

    // Parses the file at CurrentFilePath, as read, into Document and rebuilds the tree; true on success. On
    // failure Document is empty, the tree as it was, and the text in the editor in XML Mode, reported.
    bool Loadpathxml(const files::LoadedText &file);

    // Parses a text into Document and rebuilds the tree; true on success. A failure is reported and
    // changes nothing.
    bool LoadXml(const QByteArray &text);

    // Checks the editor's text; true when it is not well-formed. msgbolone: report errors and go there;
    // msgboltwo: report success. Sets HasParseErrors and the highlighted line.
    bool xmlerr(bool msgbolone, bool msgboltwo);

    // XML Mode is left: checks the editor's text, reporting errors, and parses it into Document when it is
    // well-formed and not what Document holds already. Costs nothing when nothing changed.
    void adoptEditorText();

    // XML Mode is entered: the editor's text becomes the DOM's, as one undoable edit, where they differ.
    void carryToEditor();

private:
    void putIntoEditor(const QByteArray &xml);
    bool judge(const QByteArray &text, bool msgbolone, bool msgboltwo);
    void pointOut(const dom::ParseError &error);
    void xmleror(const dom::ParseError &error);
    void loadAccepted(const QByteArray &text, const dom::Entities &entities);
    void showTree();
    bool editorTextIsAccepted() const;
    QString baseFolder() const;

    DocumentState &state_;
    Surroundings around_;
};

} // namespace document
