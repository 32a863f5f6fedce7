// Asks which of the ten slots a recorded macro goes into.
#pragma once

#include "platform/control/editor_library.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace editor {

class MacroSlotDialog : public QDialog
{
    Q_OBJECT

public:
    // Offers the first free slot, or where there is none the one used last. Slots that the macro itself
    // plays cannot be chosen.
    MacroSlotDialog(const control::EditorLibrary &library, const control::Macro &recorded, int lastUsed,
                    QWidget *parent);

    // -1 when none can be.
    int slot() const;

private:
    void layOut(const QString &heading);
    void fill(const control::EditorLibrary &library, const control::Macro &recorded, int lastUsed);
    void showState();

    QTreeWidget *lstSlots;
    QLabel *lblState;
    QPushButton *okButton;
};

} // namespace editor
