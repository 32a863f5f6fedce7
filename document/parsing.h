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

    // Reads a document file, in its own encoding or in one that somebody knows better, and judges it. What
    // cannot be read is reported in a box of the usual form, and what the user did not wait for is noted;
    // nothing changes then.
    std::optional<files::LoadedText> readFile(const QString &path, const QByteArray &encoding = {});

    // Parses the file at CurrentFilePath, as read, into Document and rebuilds the tree; true on success.
    // Bytes that are not of its encoding are a failure like any other. On failure Document is empty, the tree
    // as it was, and the text in the editor in XML Mode, reported.
    bool Loadpathxml(const files::LoadedText &file);

    // Parses a text into Document and rebuilds the tree; true on success. A failure is reported and
    // changes nothing.
    bool LoadXml(const QByteArray &text);

    // Checks the editor's text; true when it is not well-formed, or the user did not wait. msgbolone: report
    // errors and go there; msgboltwo: report success. Sets HasParseErrors and the highlighted line.
    bool xmlerr(bool msgbolone, bool msgboltwo);

    // XML Mode is left: checks the editor's text, reporting errors, and parses it into Document when it is
    // well-formed and not what Document holds already. Costs nothing when nothing changed.
    void adoptEditorText();

    // XML Mode is entered: the editor's text becomes the DOM's, as one undoable edit, where they differ.
    void carryToEditor();

private:
    struct Judged
    {
        QByteArray text;
        QString baseFolder;
        std::optional<dom::ParseError> fault;
        dom::Entities entities;
    };

    enum class Outcome
    {
        Accepted,
        Refused,
        Stopped // by the user, before there was a verdict
    };

    void putIntoEditor(const QByteArray &xml);
    // encoding: what the text is held against beside its markup, where it came out of bytes.
    Judged judgedText(const QByteArray &text, const QString &baseFolder,
                      const std::optional<files::TextEncoding> &encoding);
    bool isStopped(const Judged &judged);
    Outcome judge(bool msgbolone, bool msgboltwo);
    void conclude(const Judged &judged, bool msgbolone, bool msgboltwo);
    void pointOut(const dom::ParseError &error);
    void xmleror(const dom::ParseError &error);
    void loadAccepted(const QByteArray &text, const dom::Entities &entities);
    void showTree();
    bool editorTextIsAccepted() const;
    QString baseFolder() const;

    DocumentState &state_;
    Surroundings around_;
    std::optional<Judged> read_; // the file that was read last, until it is loaded
};

} // namespace document
