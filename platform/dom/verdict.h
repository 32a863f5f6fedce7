// Whether a text is well-formed. The judge is libxml2; nothing is built here.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <optional>

namespace dom {

// What the parser says of the first fault.
struct ParseError
{
    int code = 0; // never 0
    QString reason; // as the parser words it, its own line break included
    qint64 line = 0; // 1-based
    qint64 position = 0; // 1-based, in characters
    QString sourceText; // the offending line, cut around the fault when it is very long
    qsizetype offset = 0; // byte offset of the fault in the text
};

// The internal general entities that a document declares: name to replacement text.
using Entities = QHash<QByteArray, QByteArray>;

// Judges a whole document: well-formed, namespaces right, entities bounded. baseFolder is where relative
// external entities are looked for; only local regular files are ever read. Returns nothing when the text
// is accepted, and then fills entities (when given).
std::optional<ParseError> checkWellFormed(const QByteArray &utf8, const QString &baseFolder = {},
                                          Entities *entities = nullptr);

} // namespace dom
