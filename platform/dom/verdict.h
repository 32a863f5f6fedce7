// Whether a text is well-formed. The judge is libxml2; nothing is built here.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <functional>
#include <optional>

namespace dom {

// A place in a file that the document takes in: its document type, or an entity.
struct FilePlace
{
    QString path;
    qint64 line = 0; // 1-based
    qint64 position = 0; // 1-based, in characters
    QString sourceText; // the offending line of that file
};

// What the parser says of the first fault.
struct ParseError
{
    int code = 0; // never 0
    QString reason; // a sentence with a line break behind it; names the file where the fault lies in one
    // In the document itself: where the fault lies, or what it is reached by (a reference, the document
    // type).
    qint64 line = 0; // 1-based
    qint64 position = 0; // 1-based, in characters
    QString sourceText; // the offending line, cut around the fault when it is very long
    qsizetype offset = 0; // byte offset of the fault in the text
    std::optional<FilePlace> file; // where the fault itself lies, if not in the document
    bool stopped = false; // no fault: whoever asked was not willing to wait
};

// The internal general entities that a document declares: name to replacement text.
using Entities = QHash<QByteArray, QByteArray>;

// Asked again and again while a text is being judged, every millisecond or so; false stops that.
using GoOn = std::function<bool()>;

// Judges a whole document by the rules of the version it declares: well-formed, namespaces right, entities
// and attributes within bounds. baseFolder is where relative external entities are looked for; only local
// regular files are ever read, and what cannot be had is left out without a fault. Returns nothing when the
// text is accepted, and then fills entities (when given).
std::optional<ParseError> checkWellFormed(const QByteArray &utf8, const QString &baseFolder = {},
                                          Entities *entities = nullptr, const GoOn &goOn = {});

} // namespace dom
