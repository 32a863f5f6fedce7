// The page of colours: what can be coloured, its ink and ground, and a sample.
#pragma once

#include "editor/properties_page.h"

#include <array>

class QCheckBox;
class QLabel;
class QListWidget;

namespace editor {

class ColourButton;
class SampleEditor;
struct ColourClass;

class ColoursPage : public PropertiesPage
{
    Q_OBJECT

public:
    ColoursPage(EditorDraft &draft, QWidget *parent);

    void showDraft() override;
    void restoreDefaults() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    enum Part
    {
        Ink,
        Ground,
        Parts
    };
    struct Choice
    {
        QLabel *label;
        ColourButton *button;
        QCheckBox *follows;
    };

    void addChoice(Part part, const char *name, const QString &caption, const QString &follows);
    void layOut();
    void showClass();
    void showChoice(Part part);
    void choose(Part part, qint32 colour);
    void showSwatch(int row);
    const ColourClass &current() const;
    int slotOf(Part part) const; // -1 when the class has none
    QColor followed(int slot) const; // what the slot is shown in when it follows the palette

    QListWidget *classes_;
    QLabel *what_;
    SampleEditor *sample_;
    std::array<Choice, Parts> choices_{};
};

} // namespace editor
