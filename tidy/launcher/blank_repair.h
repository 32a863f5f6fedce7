// Tidy's layout may move blanks about only where nobody sees it.
#pragma once

#include "tidy/launcher/marked_text.h"

#include <QByteArray>
#include <QString>

namespace launcher {

struct ReadText
{
    QByteArrayView markup;
    Dialect dialect;
};

// What Tidy made of a text (both UTF-8), with the blanks that mean anything as they were: a word is parted
// where it was and nowhere else, and blanks that count each are the same. Line ends put in become lineEnd,
// unless that is empty. Where the texts do not read the same, Tidy's blanks stay.
QByteArray withRepairedBlanks(const ReadText &source, const ReadText &tidied, const QByteArray &lineEnd);

// In what a text reads otherwise than its source, told of in a line; empty where it does not. Of XML that is
// any other character; of HTML other words, in whatever order, for Tidy puts what it finds where it belongs.
QString differenceInReading(const ReadText &source, const ReadText &result);

} // namespace launcher
