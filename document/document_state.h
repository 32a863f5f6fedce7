// All that is known of the one open document.
#pragma once

#include "document/identities.h"
#include "document/workspace.h"
#include "platform/dom/document.h"
#include "platform/files/text_file.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace document {

// What a document is before anybody wrote one.
inline QByteArray newDocumentTemplate() { return QByteArrayLiteral("<?xml version=\"1.0\"?>\r\n<Element/>"); }

// A state of the editor's text that was found well-formed, and the entities it declares.
struct AcceptedText
{
    EditorIdentity editor = 0;
    dom::Entities entities;
};

struct DocumentState
{
    QString CurrentFilePath; // full path; of a new document: the working file in the temporary folder
    int PreviewCopyNumber = 0;
    QString PreviewFilePath;
    QString temporaryFolder; // where new documents live
    QString proposedPath; // of a new document: where Save proposes to put it; else empty
    files::FileStamp stamp; // of that path's file, from before it was read or after it was written
    files::FileForm form; // how the document stood in its file, and so how it is written
    bool encodingKept = false; // the user wants it as it is, though others cannot read it

    dom::Document Document; // the truth while the tree is shown
    QByteArray SavedXml; // the text at the last load or save
    Identities known;

    bool editorHasText = false; // the editor has held this document, not only the template it begins with

    bool HasParseErrors = false; // the last check of the editor's text failed
    std::optional<AcceptedText> accepted; // the last text of the editor that was found well-formed

    Tab TabTag = NormalMode; // the mode that Preview was entered from
    bool previewCopyWritten = false; // the file of that name is ours, and so ours to delete

    DomIdentity domIdentity() const { return {Document.revision()}; }

    // Where the document stands, or will when the user takes what is proposed: what it refers to is beside
    // it.
    QString likelyPath() const { return proposedPath.isEmpty() ? CurrentFilePath : proposedPath; }
    QString previewCopyPath() const { return likelyPath() + QString::number(PreviewCopyNumber); }
};

} // namespace document
