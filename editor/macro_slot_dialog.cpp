#include "editor/macro_slot_dialog.h"

#include "editor/macro_words.h"

#include <QDialogButtonBox>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace editor {

namespace {

enum Column
{
    Name,
    Holds,
    Keys
};

constexpr int emptyRole = Qt::UserRole;
constexpr int shownRows = control::MacroSlots::count;

} // namespace

MacroSlotDialog::MacroSlotDialog(const control::EditorLibrary &library, const control::Macro &recorded,
                                 int lastUsed, QWidget *parent)
    : QDialog(parent), lstSlots(new QTreeWidget(this)), lblState(new QLabel(this))
{
    setObjectName(QStringLiteral("frmMacroSlot"));
    setWindowTitle(QStringLiteral("Create Macro"));
    lstSlots->setObjectName(QStringLiteral("lstSlots"));
    lstSlots->setAccessibleName(tr("Macros"));
    lblState->setObjectName(QStringLiteral("lblState"));
    layOut(QStringLiteral("&Store the recorded %1 in:").arg(countedSteps(control::strokesIn(recorded))));
    fill(library, recorded, lastUsed);
    connect(lstSlots, &QTreeWidget::currentItemChanged, this, &MacroSlotDialog::showState);
    connect(lstSlots, &QTreeWidget::itemDoubleClicked, okButton, &QPushButton::click);
    showState();
    lstSlots->setFocus();
}

void MacroSlotDialog::layOut(const QString &heading)
{
    lstSlots->setColumnCount(3);
    lstSlots->setHeaderLabels({QStringLiteral("Macro"), QStringLiteral("Holds"), QStringLiteral("Keys")});
    lstSlots->setRootIsDecorated(false);
    lstSlots->setUniformRowHeights(true);
    lstSlots->setAllColumnsShowFocus(true);
    lstSlots->header()->setSectionsMovable(false);
    auto *label = new QLabel(heading, this);
    label->setBuddy(lstSlots);
    lblState->setWordWrap(true);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    okButton = buttons->button(QDialogButtonBox::Ok);
    okButton->setObjectName(QStringLiteral("OKButton"));
    okButton->setText(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CancelButton"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *whole = new QVBoxLayout(this);
    whole->addWidget(label);
    whole->addWidget(lstSlots, 1);
    whole->addWidget(lblState);
    whole->addWidget(buttons);
}

void MacroSlotDialog::fill(const control::EditorLibrary &library, const control::Macro &recorded,
                           int lastUsed)
{
    QTreeWidgetItem *offered = nullptr;
    for (int slot = 0; slot < control::MacroSlots::count; ++slot) {
        const QByteArray bytes = library.macros.macro(slot);
        const bool circular = control::plays(library.macros, recorded, slot);
        const QString holds = circular ? QStringLiteral("played by the new one") : holdingText(bytes);
        auto *item = new QTreeWidgetItem(lstSlots, {macroName(slot), holds, keysText(library, slot)});
        item->setData(Name, emptyRole, bytes.isEmpty());
        item->setDisabled(circular);
        const bool better = offered == nullptr
            || (bytes.isEmpty() && !offered->data(Name, emptyRole).toBool())
            || (slot == lastUsed && !offered->data(Name, emptyRole).toBool());
        if (!circular && better)
            offered = item;
    }
    lstSlots->setCurrentItem(offered);
    int width = 2 * lstSlots->frameWidth() + lstSlots->fontMetrics().averageCharWidth();
    for (int column = Name; column <= Keys; ++column) {
        lstSlots->resizeColumnToContents(column);
        lstSlots->setColumnWidth(column,
                                 lstSlots->columnWidth(column) + 2 * fontMetrics().averageCharWidth());
        width += lstSlots->columnWidth(column);
    }
    const int row = lstSlots->sizeHintForRow(0);
    lstSlots->setMinimumSize(
        width, shownRows * row + lstSlots->header()->sizeHint().height() + 2 * lstSlots->frameWidth());
}

int MacroSlotDialog::slot() const
{
    QTreeWidgetItem *item = lstSlots->currentItem();
    return item == nullptr || item->isDisabled() ? -1 : lstSlots->indexOfTopLevelItem(item);
}

void MacroSlotDialog::showState()
{
    okButton->setEnabled(slot() >= 0);
    const QTreeWidgetItem *item = lstSlots->currentItem();
    if (slot() < 0)
        lblState->setText(QStringLiteral("A macro cannot play itself."));
    else if (item->data(Name, emptyRole).toBool())
        lblState->setText(QStringLiteral("%1 is free.").arg(item->text(Name)));
    else
        lblState->setText(QStringLiteral("%1 will be replaced.").arg(item->text(Name)));
}

} // namespace editor
