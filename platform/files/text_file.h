// Whole text files: read with their encoding, written atomically.
#pragma once

#include "platform/files/file_stamp.h"
#include "platform/files/text_encoding.h"
#include "platform/result.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace files {

// What ends the file's last line, and so what is taken off on reading and put back on writing.
enum class FileEnd
{
    CrLf,
    Lf,
    Cr,
    None // nothing: the last line has no end
};

// How a document stood in its file.
struct FileForm
{
    TextEncoding encoding;
    FileEnd end = FileEnd::CrLf; // of a new document; an opened one keeps what it has

    bool operator==(const FileForm &) const = default;
};

struct LoadedText
{
    QByteArray utf8; // without the one final line end that terminates the file
    FileForm form;
    FileStamp stamp; // from before the reading: what is written meanwhile does not pass for read
    QString note; // one line for the status bar, or empty
};

// Reads a whole file as text, in the encoding given or else in its own. Fails for what is missing,
// unreadable, not a regular file or over 2 GiB.
platform::Result<LoadedText> readTextFile(const QString &path, const QByteArray &encoding = {});

// Reads a whole file that is no document, as UTF-8 and with all its line ends. Fails as above.
platform::Result<QByteArray> readPlainText(const QString &path);

// How a document stands in its file now that it was written.
struct WrittenText
{
    FileForm form;
    QString note; // one line for the status bar, or empty
};

// Writes a document: encoded as it came or declares (see outlookOf), followed by the form's line end;
// atomically, or else writesOver is called before the old file is written over (see atomic_write.h).
platform::Result<WrittenText> writeDocumentFile(const QString &path, const QByteArray &utf8,
                                                const FileForm &form,
                                                const std::function<void()> &writesOver = {});

// Whether a file holds what writing the document would put there.
bool isWrittenAs(const QString &path, const QByteArray &utf8, const FileForm &form);

// Writes any other text file: UTF-8 followed by CR LF; atomically.
platform::Result<void> writeTextFile(const QString &path, const QByteArray &utf8);

// Replaces the file's content in one step: new file, flush, rename. Links are followed, permissions and
// (where allowed) owner kept. On failure the old file stands as it was.
platform::Result<void> writeAtomically(const QString &path, const QByteArray &bytes);

} // namespace files
