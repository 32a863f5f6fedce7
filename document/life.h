// The life of the one document: new, open, the end; and the help pages.
#pragma once

#include "document/parsing.h"
#include "document/saving.h"
#include "document/succession.h"
#include "document/working_files.h"

#include <QString>

namespace document {

enum class HelpPage
{
    Contents,
    Index,
    Search
};

class Life
{
public:
    Life(DocumentState &state, const Surroundings &around, Parsing &parsing, WorkingFiles &files,
         Saving &saving, Succession &succession)
        : state_(state), around_(around), parsing_(parsing), files_(files), saving_(saving),
          succession_(succession)
    { }

    // The document's part of start-up: opens the document of that path, as Open does, or a new one where it
    // is empty. A name that no file has yet is that of the new document.
    void prelodr(const QString &document);

    void newDocument();

    // Asks for a file and opens it.
    void open();

    // Opens the file at path, for one that was dropped on the window. What cannot be read is reported, and
    // the open document stays.
    void openPath(const QString &path);

    // Another program changed the document's file: reads it again, whatever was changed here. False when it
    // cannot be read, which is reported; nothing changes then.
    bool reload();

    // Reads the document's file again in another encoding, whatever was changed here. False when it cannot be
    // read, which is reported; nothing changes then.
    bool reopen(const QByteArray &encoding);

    // Whether the document has no file yet.
    bool isNew() const { return files_.istmppath(); }

    // Whether the file holds what it held when it was last read or written, whoever wrote it since.
    bool fileIsAsSaved() const;

    // Another program changed or removed the document's file, and what is open here stays: it counts as
    // changed unless it is what the file now holds.
    void keepOver();

    // Opens an unsaved text of the file at path, or of a new document where that is empty, as what the
    // document has become since its file was written; in XML Mode when that is the mode, or when the text is
    // not well-formed. False when the user would rather stay with what is open.
    bool recover(const QString &path, const QByteArray &text, const files::FileForm &form, Tab mode);

    // The window is about to close: asks the save question; false when it must stay open. Otherwise clears
    // up.
    bool leave();

    // Takes away the files that only this process needs. Nothing but its end may follow.
    void clearUp();

    void openHelp(HelpPage page);

private:
    bool openNamed(const QString &path);
    void loadAs(const QString &path, const files::LoadedText &file);
    void beginAnew(const QString &path);
    void openExisting(const QString &path);
    void take(const QString &path, const files::LoadedText &file);
    void takeForm(const files::LoadedText &file);
    void setForm(const files::FileForm &form);
    void takeSpelling();
    void takeIntoEditor(const files::LoadedText &file);
    void takeAgain(const files::LoadedText &file);
    void clearEditor();
    void leaveViews(const QString &newPath);
    void showUnsaved(const QByteArray &text, Tab mode);

    DocumentState &state_;
    Surroundings around_;
    Parsing &parsing_;
    WorkingFiles &files_;
    Saving &saving_;
    Succession &succession_;
};

} // namespace document
