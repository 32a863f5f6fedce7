#include "platform/dialogs/fixed_font.h"

#include <QFontDatabase>
#include <QWidget>

namespace dialogs {

QFont fixedFont(const QWidget &widget)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFont &own = widget.font();
    if (own.pointSizeF() > 0)
        font.setPointSizeF(own.pointSizeF());
    else
        font.setPixelSize(own.pixelSize());
    return font;
}

} // namespace dialogs
