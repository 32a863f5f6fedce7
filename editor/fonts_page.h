// The page of the face, and of bold and italic for each part of the text, with a sample.
#pragma once

#include "editor/properties_page.h"

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QTableWidget;
class QTableWidgetItem;

namespace editor {

class SampleEditor;

class FontsPage : public PropertiesPage
{
    Q_OBJECT

public:
    FontsPage(EditorDraft &draft, QWidget *parent);

    void showDraft() override;
    void restoreDefaults() override;

private:
    void addStyles();
    void layOut();
    void connectControls();
    void showFace();
    void showStyles();
    void takeStyle(const QTableWidgetItem &item);
    void showChange();
    void pointAtCurrent();

    QComboBox *face_;
    QDoubleSpinBox *size_;
    QList<QCheckBox *> manners_; // by the rows of a table
    QTableWidget *styles_;
    SampleEditor *sample_;
};

} // namespace editor
