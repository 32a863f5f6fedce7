#include "document/report.h"

namespace document {

// The blanks line the colons up in the proportional face of a message box; the reason brings its own line
// end. The place is that of the fault itself, in whatever file: the reason names it.
QString reportText(const dom::ParseError &error)
{
    const qint64 line = error.file ? error.file->line : error.line;
    const qint64 position = error.file ? error.file->position : error.position;
    return QStringLiteral("Error!\r\n\r\nPossible Reason:  ") + error.reason
        + QStringLiteral("\r\nLine              :  ") + QString::number(line)
        + QStringLiteral("\r\nLine Position :  ") + QString::number(position)
        + QStringLiteral("\r\nSource Text :  ") + (error.file ? error.file->sourceText : error.sourceText);
}

} // namespace document
