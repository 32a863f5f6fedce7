#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>

namespace dom {

// What a document type says of the blanks in elements by declaring a default for xml:space: true for those
// that are kept, false for those that are layout. Only what stands in the markup itself is read.
QHash<QByteArray, bool> declaredSpaces(QByteArrayView documentType);

// Elements whose blanks count by what they are, whether or not anything says so: <pre> and <textarea>.
bool isPreformatted(QByteArrayView elementName);

} // namespace dom
