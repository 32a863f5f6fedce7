// A document's unsaved text on its way to a file of its own and back.
//
// The file is one line that says what it is, with a checksum of all that follows; one line of JSON about the
// document; and the text. So a copy is whole or known not to be.
#pragma once

#include "document/workspace.h"
#include "platform/files/text_file.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace document {

// What there is to know of an unsaved text besides itself.
struct RecoveryHead
{
    QString path; // the document's file; empty for a new document
    files::FileForm form;
    Tab mode = NormalMode; // whether it was edited in Normal Mode or in XML Mode
    QDateTime changed; // when the text was as it is here
};

struct RecoveryCopy
{
    RecoveryHead head;
    QByteArray text; // UTF-8
};

// What a copy's file begins with, as far as the beginning alone can tell.
struct RecoveryBeginning
{
    RecoveryHead head;
    qint64 fileSize = 0; // what the file's size has to be
    bool legible = false; // nothing of this counts otherwise
};

struct OpenedCopy
{
    RecoveryCopy copy;
    bool whole = false; // otherwise copy is what text there is, of a document without a file
};

// What stands in the file before the text.
QByteArray sealedHead(const RecoveryCopy &copy);

// From the file's first bytes.
RecoveryBeginning readBeginning(const QByteArray &bytes);

// From all of the file's bytes. Never fails; text that is not whole is valid UTF-8 all the same.
OpenedCopy openCopy(const QByteArray &bytes);

} // namespace document
