// A field for the size of a face in points, in quarter steps; fractions are shown as far as there are any.
#pragma once

#include <QDoubleSpinBox>

namespace editor {

class PointSizeBox : public QDoubleSpinBox
{
public:
    explicit PointSizeBox(QWidget *parent = nullptr);

    QString textFromValue(double points) const override;
};

} // namespace editor
