#include "tree/properties_fault.h"

#include <QLabel>
#include <QPalette>

namespace tree {

namespace {

const QColor alarm(0xDA, 0x2F, 0x2F);

QColor tinted(const QColor &ground)
{
    constexpr float share = 0.22F;
    const auto mix = [](float a, float b) { return a * (1 - share) + b * share; };
    return QColor::fromRgbF(mix(ground.redF(), alarm.redF()), mix(ground.greenF(), alarm.greenF()),
                            mix(ground.blueF(), alarm.blueF()));
}

} // namespace

void markFault(QWidget *field, const QString &reason)
{
    if (!field || field->accessibleDescription() == reason)
        return;
    field->setPalette(QPalette());
    if (!reason.isEmpty()) {
        QPalette palette;
        palette.setColor(QPalette::Base, tinted(field->palette().color(QPalette::Base)));
        palette.setColor(QPalette::AlternateBase, tinted(field->palette().color(QPalette::AlternateBase)));
        field->setPalette(palette);
    }
    field->setAccessibleDescription(reason);
}

QLabel *makeReason(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    // The room is kept, so that nothing moves when a reason comes.
    label->setMinimumHeight(label->fontMetrics().lineSpacing());
    return label;
}

} // namespace tree
