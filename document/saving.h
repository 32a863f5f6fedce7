// The change test, Save and Save As.
#pragma once

#include "document/document_state.h"
#include "document/surroundings.h"
#include "document/working_files.h"

#include <functional>

namespace document {

enum class SaveResult
{
    Saved,
    Dismissed,
    Failed,
    LoadedAgain, // in place of being written
    Cancelled // by the user, who stays with the document
};

class Saving
{
public:
    Saving(DocumentState &state, const Surroundings &around, WorkingFiles &files)
        : state_(state), around_(around), files_(files)
    { }

    // Puts a text of the document where it outlives the process, before it returns. Called when a save
    // failed, and before one that could leave half a file if the process were killed.
    using Keep = std::function<void(const QByteArray &text)>;
    void keepBy(Keep keep) { keep_ = std::move(keep); }

    // Asked before the document's own file is written: false when another program changed it and the user had
    // it loaded again, so that nothing is written.
    using MayWrite = std::function<bool()>;
    void askFirst(MayWrite mayWrite) { mayWrite_ = std::move(mayWrite); }

    // Asked when the document may be let go: shows one that it took the place of and that is unsaved, to be
    // asked about as well; false when there is none.
    using ShowFormer = std::function<bool()>;
    void askOfFormer(ShowFormer showFormer) { showFormer_ = std::move(showFormer); }

    // The document's text as the view shown has it: the DOM's in Normal Mode, the editor's in XML Mode, in
    // Preview that of the mode it was entered from.
    QByteArray currentText() const;

    // Whose text that is: Normal Mode or XML Mode.
    Tab shownMode() const { return domIsSource() ? NormalMode : XmlMode; }

    // Whether the current text differs from SavedXml. Compares the two when that is not known.
    bool isChanged();

    // Whether it may differ, by what is known without a look at the texts.
    bool mayBeChanged() const;

    // Asks whether to save a changed document, and does so. True when the user cancelled or had the file
    // loaded again, or when the document could not be written and going on would lose it.
    bool cndsavefunc();

    // What the user calls the document.
    QString documentName() const;

    // The document's unsaved text is about to be let go: hands it to the workspace.
    void giveUp();

    // Writes the current text to the document's file; of a new document to a file that is asked for. What
    // cannot be written leaves file and SavedXml as they were and is kept; a box says why and offers Save As.
    SaveResult save();
    // Dismissed when no file was chosen, Failed when one was that could not be written.
    SaveResult saveAs();

    // SavedXml becomes the DOM's serialised XML, as of a document that was just made.
    void rememberDom();

    // SavedXml becomes the current text, which was just read: the DOM's, or the editor's of what does not
    // parse.
    void rememberLoaded();

    // "Zelph XML Editor - " and CurrentFilePath, in the status bar.
    void showTitle();

    // The document's file has this name now, with the content it had; what is unsaved stays so.
    void follow(const QString &path) { moveTo(path); }

private:
    bool domIsSource() const;
    bool mustStay();
    void knowSaved();
    void keep(const QByteArray &text) const;
    platform::Result<void> write(const QString &path, const QByteArray &text);
    bool offersSaveAs(const QString &reason); // of what was not written; true when accepted
    bool mayWriteTo(const QString &path);
    void moveTo(const QString &path);

    DocumentState &state_;
    Surroundings around_;
    WorkingFiles &files_;
    Keep keep_;
    MayWrite mayWrite_;
    ShowFormer showFormer_;
};

// The filter of the open and save dialogs.
QString documentFilter();

} // namespace document
