#include "editor/point_size_box.h"

namespace editor {

namespace {

constexpr int fractionDigits = 4; // as many as are kept
constexpr double smallest = 4;
constexpr double largest = 96;
constexpr double step = 0.25;

} // namespace

PointSizeBox::PointSizeBox(QWidget *parent) : QDoubleSpinBox(parent)
{
    setDecimals(fractionDigits);
    setRange(smallest, largest);
    setSingleStep(step);
    setSuffix(tr(" pt"));
}

QString PointSizeBox::textFromValue(double points) const
{
    return locale().toString(points, 'g', QLocale::FloatingPointShortest);
}

} // namespace editor
