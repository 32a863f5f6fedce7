#include "tree/node_delegate.h"

#include "tree/label.h"
#include "tree/tree_model.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace tree {

QIcon NodeDelegate::image(const QModelIndex &index) const
{
    const int image = index.data(TreeModel::ImageRole).toInt();
    return image >= 1 && image <= int(images_.size()) ? images_[size_t(image - 1)] : QIcon();
}

void NodeDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->icon = image(index);
    // Labels stay in line, whether or not a node has a picture.
    option->features |= QStyleOptionViewItem::HasDecoration;
    const QString hint = index.data(TreeModel::HintRole).toString();
    if (hint.isEmpty())
        return;
    option->text = hint;
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->font.setItalic(true);
    option->fontMetrics = QFontMetrics(option->font);
    option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
}

bool NodeDelegate::isCut(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem filled = option;
    initStyleOption(&filled, index);
    const QStyle *style = filled.widget->style();
    const int room = style->subElementRect(QStyle::SE_ItemViewItemText, &filled, filled.widget).width();
    const int margins = 2 * (style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, filled.widget) + 1);
    return filled.text.endsWith(QChar(0x2026))
        || filled.fontMetrics.horizontalAdvance(filled.text) + margins > room;
}

bool NodeDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                             const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    if (!index.isValid() || !isCut(option, index)) {
        QToolTip::hideText();
        return false;
    }
    const QString text = index.data(Qt::ToolTipRole).toString();
    QToolTip::showText(event->globalPos(),
                       QStringLiteral("<p style=\"white-space: pre-wrap\">%1</p>").arg(text.toHtmlEscaped()),
                       view->viewport(), option.rect);
    return true;
}

} // namespace tree
