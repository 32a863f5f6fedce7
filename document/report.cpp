#include "document/report.h"

namespace document {

// The blanks line the colons up in the proportional face of a message box; the reason brings its own line
// end.
QString reportText(const dom::ParseError &error)
{
    return QStringLiteral("Error!\r\n\r\nPossible Reason:  ") + error.reason
        + QStringLiteral("\r\nLine              :  ") + QString::number(error.line)
        + QStringLiteral("\r\nLine Position :  ") + QString::number(error.position)
        + QStringLiteral("\r\nSource Text :  ") + error.sourceText;
}

} // namespace document
