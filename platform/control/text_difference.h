// The one stretch in which two texts differ, so that replacing one by the other leaves the rest untouched.
#pragma once

#include <QByteArrayView>

namespace control {

struct TextDifference
{
    // Bytes that both texts begin with, and that both end with; the two never overlap.
    qsizetype prefix = 0;
    qsizetype suffix = 0;
};

// The cuts fall neither inside a UTF-8 character nor between CR and LF, in either text.
TextDifference differenceOf(QByteArrayView before, QByteArrayView after);

} // namespace control
