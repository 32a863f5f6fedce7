// The page of what is shown beside the text, and of what is done along while typing.
#pragma once

#include "editor/properties_page.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QSpinBox;

namespace editor {

class SampleEditor;

class OptionsPage : public PropertiesPage
{
    Q_OBJECT

public:
    OptionsPage(EditorDraft &draft, QWidget *parent);

    void showDraft() override;
    void restoreDefaults() override;

private:
    void addSwitches();
    void addNumbering();
    void layOut();
    void connectNumbering();
    void showChange();

    QGroupBox *shown_;
    QGroupBox *typing_;
    QList<QCheckBox *> switches_; // by the rows of a table
    QWidget *numbering_;
    QComboBox *style_;
    QSpinBox *start_;
    SampleEditor *sample_;
};

} // namespace editor
