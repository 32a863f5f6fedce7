// Where a byte of a text stands, as an editor counts lines: they end with CR LF, LF or a lone CR.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace dom {

struct TextPlace
{
    qint64 line = 1; // 1-based
    qint64 position = 1; // 1-based, in characters
    QString sourceText; // the line, cut around the place when it is very long
};

TextPlace placeOf(QByteArrayView utf8, qsizetype offset);

// The number of the line in which a byte stands.
qint64 lineOf(QByteArrayView utf8, qsizetype offset);

} // namespace dom
