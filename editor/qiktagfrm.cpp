#include "editor/qiktagfrm.h"

#include "editor/quick_tag_target.h"
#include "editor/quick_tags.h"
#include "platform/dialogs/fixed_font.h"
#include "platform/dialogs/theme_icon.h"
#include "platform/dialogs/window_size.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace editor {

namespace {

enum Tab
{
    TreeTab = 0,
    EditorTab = 1
};

constexpr int entryRole = Qt::UserRole; // the entry's index in the catalogue
constexpr int usualColumns = 88;
constexpr int usualLines = 27;
constexpr int rowSpacing = 1; // pixels
constexpr int ownerMargin = 24; // pixels between this dialog and its owner's right edge

int firstShown(int tab) { return tab == TreeTab ? firstElementTag : 0; }

QString whatInsertingMeans(int tab)
{
    switch (tab) {
    case TreeTab:
        return QStringLiteral("Adds the element to the tree, with empty attributes.");
    case EditorTab:
        return QStringLiteral("Puts the tag around the selected text.");
    default:
        return QStringLiteral("Nothing can be inserted in Preview.");
    }
}

bool movesInList(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

bool types(const QKeyEvent &event)
{
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !command && !event.text().isEmpty() && event.text().front().isPrint();
}

} // namespace

qiktagfrm::qiktagfrm(QuickTagTarget &target, QWidget *parent)
    : QDialog(parent), target_(target), tab_(target.currentTab()), txtSearch(new QLineEdit(this)),
      List1(new QListWidget(this)), lblState(new QLabel(this)),
      OKButton(new QPushButton(QStringLiteral("OK"), this)),
      CancelButton(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName(QStringLiteral("qiktagfrm"));
    setWindowTitle(QStringLiteral("Quick Tags"));
    setAttribute(Qt::WA_DeleteOnClose);
    txtSearch->setObjectName(QStringLiteral("txtSearch"));
    List1->setObjectName(QStringLiteral("List1"));
    lblState->setObjectName(QStringLiteral("lblState"));
    OKButton->setObjectName(QStringLiteral("OKButton"));
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    layOut();
    connectControls();
    fill();
    resize(dialogs::sizeInCharacters(*this, usualColumns, usualLines));
    txtSearch->setFocus();
}

void qiktagfrm::layOut()
{
    txtSearch->setClearButtonEnabled(true);
    txtSearch->addAction(dialogs::themeIcon(QStringLiteral("edit-find")), QLineEdit::LeadingPosition);
    List1->setFont(dialogs::fixedFont(*this));
    List1->setLayoutDirection(Qt::LeftToRight); // as all code
    List1->setSpacing(rowSpacing);
    List1->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    List1->setTextElideMode(Qt::ElideNone);
    List1->setAccessibleName(windowTitle());
    lblState->setWordWrap(true);

    auto *label = new QLabel(QStringLiteral("&Search:"), this);
    label->setBuddy(txtSearch);
    auto *search = new QHBoxLayout;
    search->addWidget(label);
    search->addWidget(txtSearch, 1);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(OKButton, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);
    OKButton->setDefault(true);

    auto *whole = new QVBoxLayout(this);
    whole->addLayout(search);
    whole->addWidget(List1, 1);
    whole->addWidget(lblState);
    whole->addWidget(buttons);

    setTabOrder(txtSearch, List1);
    setTabOrder(List1, OKButton);
    setTabOrder(OKButton, CancelButton);
}

void qiktagfrm::connectControls()
{
    txtSearch->installEventFilter(this);
    List1->installEventFilter(this);
    connect(txtSearch, &QLineEdit::textChanged, this, &qiktagfrm::narrow);
    connect(List1, &QListWidget::itemDoubleClicked, this, &qiktagfrm::insert);
    connect(List1, &QListWidget::itemSelectionChanged, this, &qiktagfrm::showState);
    connect(OKButton, &QPushButton::clicked, this, &qiktagfrm::insert);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void qiktagfrm::modeChanged()
{
    const int before = tab_;
    tab_ = target_.currentTab();
    if (firstShown(before) != firstShown(tab_))
        fill();
    showState();
}

// Shows what the mode and the search leave; what was selected stays so where it can.
void qiktagfrm::fill()
{
    const int entry = currentEntry();
    List1->clear();
    for (const int index : tagsMatching(txtSearch->text(), firstShown(tab_))) {
        auto *item = new QListWidgetItem(quickTag(index), List1);
        item->setData(entryRole, index);
        item->setToolTip(item->text());
    }
    select(entry);
    showState();
}

void qiktagfrm::narrow()
{
    fill();
    const QString search = txtSearch->text();
    if (!search.trimmed().isEmpty())
        select(likeliestTag(tagsMatching(search, firstShown(tab_)), search));
}

int qiktagfrm::currentEntry() const
{
    const QList<QListWidgetItem *> selected = List1->selectedItems();
    return selected.isEmpty() ? -1 : selected.first()->data(entryRole).toInt();
}

void qiktagfrm::select(int entry)
{
    for (int row = 0; row < List1->count(); ++row) {
        if (List1->item(row)->data(entryRole).toInt() == entry) {
            List1->setCurrentRow(row);
            return;
        }
    }
}

// Who comes to the list by keyboard stands on its first row, which would not be selected otherwise.
void qiktagfrm::selectFirstFor(const QFocusEvent &event)
{
    const bool byKeys = event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
    if (byKeys && currentEntry() < 0)
        List1->setCurrentRow(0);
}

void qiktagfrm::insert()
{
    modeChanged(); // takes back what was told of another tag too
    const int entry = currentEntry();
    if (entry < 0)
        return;
    if (tab_ == TreeTab)
        addtotree(entry);
    else if (tab_ == EditorTab)
        addtotxt(entry);
}

void qiktagfrm::addtotree(int entry)
{
    const TagElement element = elementOf(quickTag(entry));
    if (const QString refused = target_.addElement(element.name, element.attributes); !refused.isEmpty())
        lblState->setText(refused.endsWith(u'.') ? refused : refused + u'.');
}

void qiktagfrm::addtotxt(int entry)
{
    target_.replaceSelection(wrapped(quickTag(entry), target_.selectedText()));
}

void qiktagfrm::showState()
{
    const bool inserts = tab_ == TreeTab || tab_ == EditorTab;
    OKButton->setEnabled(inserts && currentEntry() >= 0);
    const bool nothingFound = List1->count() == 0;
    lblState->setText(nothingFound ? QStringLiteral("No tag matches the search.") : whatInsertingMeans(tab_));
}

bool qiktagfrm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == List1 && event->type() == QEvent::FocusIn)
        selectFirstFor(*static_cast<QFocusEvent *>(event));
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (watched == txtSearch && movesInList(key->key())) {
        QCoreApplication::sendEvent(List1, event);
        return true;
    }
    if (watched == List1 && (key->key() == Qt::Key_Left || key->key() == Qt::Key_Right)) {
        List1->horizontalScrollBar()->triggerAction(key->key() == Qt::Key_Left
                                                        ? QAbstractSlider::SliderSingleStepSub
                                                        : QAbstractSlider::SliderSingleStepAdd);
        return true;
    }
    if (watched == List1 && types(*key)) {
        txtSearch->setFocus();
        QCoreApplication::sendEvent(txtSearch, event);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void qiktagfrm::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        modeChanged();
}

void qiktagfrm::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!placed_)
        placeBesideOwner();
    placed_ = true;
}

// At the owner's right edge, where it covers little of the tree or the text.
void qiktagfrm::placeBesideOwner()
{
    if (parentWidget() == nullptr)
        return;
    const QRect owner = parentWidget()->window()->geometry();
    const QRect room = screen()->availableGeometry();
    const int left = owner.right() - width() - ownerMargin;
    const int top = owner.top() + (owner.height() - height()) / 2;
    move(std::clamp(left, room.left(), std::max(room.left(), room.right() - width())),
         std::clamp(top, room.top(), std::max(room.top(), room.bottom() - height())));
}

} // namespace editor
