#include "document/working_files.h"

#include "platform/files/file_helpers.h"
#include "platform/files/private_files.h"

#include <QDir>

namespace document {

QString WorkingFiles::makefile()
{
    state_.temporaryFolder = findTemporaryFolder();
    QString workingFile = files::joinPath(state_.temporaryFolder, QStringLiteral("\\zelphedit.xml"));
    state_.PreviewFilePath = files::joinPath(state_.temporaryFolder, QStringLiteral("\\prev.xml"));
    tryToWrite(workingFile, newDocumentTemplate());
    tryToWrite(state_.PreviewFilePath, {});
    return workingFile;
}

bool WorkingFiles::istmppath() const
{
    return files::parentFolderOf(state_.CurrentFilePath) == state_.temporaryFolder;
}

void WorkingFiles::kiltmpfyl()
{
    if (state_.previewCopyWritten && !files::deleteIfExists(state_.previewCopyPath()))
        around_.workspace.note(
            QStringLiteral("The preview copy %1 could not be deleted.").arg(state_.previewCopyPath()));
    state_.previewCopyWritten = false;
    around_.workspace.closeAssignedPreview();
}

void WorkingFiles::setCurrentFile(const QString &path)
{
    state_.CurrentFilePath = path;
    state_.proposedPath.clear();
    state_.PreviewCopyNumber = files::firstFreeNumber(path);
    state_.previewCopyWritten = false;
}

void WorkingFiles::spare(const QString &chosenPath)
{
    if (chosenPath == state_.previewCopyPath())
        state_.previewCopyWritten = false;
}

platform::Result<void> WorkingFiles::writePreviewCopy(const QByteArray &text)
{
    // Somebody may have made something of that name since; it is not ours to overwrite.
    if (!state_.previewCopyWritten || !files::fileExists(state_.previewCopyPath())) {
        state_.PreviewCopyNumber = files::firstFreeNumber(state_.likelyPath());
        state_.previewCopyWritten = false;
    }
    const QString path = state_.previewCopyPath();
    const auto inItsEncoding
        = files::writeDocumentFile(path, text, {state_.form.encoding, files::FileEnd::CrLf});
    const auto written = inItsEncoding ? platform::Result<void>() : files::writeTextFile(path, text);
    state_.previewCopyWritten = state_.previewCopyWritten || written.ok();
    return written;
}

void WorkingFiles::preview(const QByteArray &text)
{
    const Busy busy(around_.workspace);
    const auto written = writePreviewCopy(text);
    around_.browser.setSilent(true);
    if (written) {
        around_.browser.navigate(state_.previewCopyPath());
        return;
    }
    const auto bytes = files::encodeText(text, state_.form.encoding);
    around_.browser.showText(bytes ? *bytes : text, state_.previewCopyPath());
    around_.workspace.note(QStringLiteral("Shown without a preview copy: %1").arg(written.reason()));
}

QString WorkingFiles::findTemporaryFolder()
{
    if (const QString note = files::temporaryFolder().note; !note.isEmpty())
        around_.workspace.note(note);
    const auto usual = files::privateTempFolder();
    if (usual && claim(*usual))
        return *usual;
    if (!usual)
        around_.workspace.note(usual.reason());
    const QDir folder(files::temporaryFolder().path);
    if (!standIn_)
        standIn_ = std::make_unique<QTemporaryDir>(folder.filePath(QStringLiteral("xmleditor-XXXXXX")));
    // Where nothing can be written at all a new document is in a folder that is not there.
    return standIn_->isValid() ? standIn_->path() : folder.filePath(QStringLiteral("xmleditor-none"));
}

// The working files have the same names in every window.
bool WorkingFiles::claim(const QString &folder)
{
    if (!claim_)
        claim_ = files::OwnerLock::tryTake(files::joinPath(folder, QStringLiteral("\\window")));
    return claim_ != nullptr;
}

// Where a link stands it is replaced: whoever put it there does not choose what the program writes over.
void WorkingFiles::tryToWrite(const QString &path, const QByteArray &text)
{
    const QByteArrayView pieces[] = {text, "\r\n"};
    if (const auto written = files::writePrivateFile(path, path + QStringLiteral(".part"), pieces); !written)
        around_.workspace.note(written.reason());
}

} // namespace document
