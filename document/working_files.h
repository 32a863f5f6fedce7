// The files that the program keeps for itself: the working file and the preview file in the temporary folder,
// and the numbered preview copy beside the document.
#pragma once

#include "document/document_state.h"
#include "document/surroundings.h"
#include "platform/files/owner_lock.h"

#include <QTemporaryDir>
#include <memory>

namespace document {

class WorkingFiles
{
public:
    WorkingFiles(DocumentState &state, const Surroundings &around) : state_(state), around_(around) { }

    // Writes the template to the working file and an empty preview file; sets PreviewFilePath. The working
    // file's path. What cannot be written is noted.
    QString makefile();

    // Whether the open document is a new one, which lives in the temporary folder.
    bool istmppath() const;

    // Deletes the preview copy, if there is one, and closes the Assigned file Preview.
    void kiltmpfyl();

    // Makes path the document's: CurrentFilePath and a fresh PreviewCopyNumber.
    void setCurrentFile(const QString &path);

    // A file that the user chose is no preview copy any more, even if it was one.
    void spare(const QString &chosenPath);

    // Writes text to the preview copy, encoded as the text declares, followed by CR LF. On failure the
    // reason, and no copy.
    platform::Result<void> writePreviewCopy(const QByteArray &text);

    // Shows text in the browser through the preview copy; without one where none can be written.
    void preview(const QByteArray &text);

private:
    QString findTemporaryFolder();
    bool claim(const QString &folder);
    void tryToWrite(const QString &path, const QByteArray &text);

    DocumentState &state_;
    Surroundings around_;
    // Only where the usual temporary folder is not to be trusted, or another window of the user has it.
    std::unique_ptr<QTemporaryDir> standIn_;
    std::unique_ptr<files::OwnerLock> claim_; // on the usual one
};

} // namespace document
