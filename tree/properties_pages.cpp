#include "tree/properties_pages.h"

#include "platform/control/code_colours.h"
#include "platform/control/code_editor.h"
#include "platform/dialogs/theme_icon.h"
#include "tree/attribute_list.h"
#include "tree/label.h"
#include "tree/properties_box.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tree {

// Texts and control names; "" for what a page does not have.
struct PageKind
{
    const char *frame;
    const char *title;
    const char *dialogCaption;
    const char *nameCaption;
    const char *name;
    const char *spokenName;
    const char *dataCaption;
    const char *data;
    const char *spokenData;
    int symbolTarget;
};

namespace {

QString latin1(const char *text) { return QString::fromLatin1(text); }

// In the order of the images.
constexpr PageKind pageKinds[PropertiesPage::count] = {
    {"frameelname", "Element Properties:", "Element Properties:", "Element &Name:", "elname", "Element Name",
     "", "", "", PropertiesPage::noTarget},
    {"frameprocall", "Processing Instruction...", "Processing Instruction Properties:", "&Target:",
     "txtprocall", "Target", "&Data:", "txtdata", "Data", 1},
    {"framecomment", "Comment...", "Comment Properties:", "", "", "", "", "comentbox", "Comment", 2},
    {"framecdta", "CDATA", "CDATA Properties:", "", "", "", "", "cdatbox", "CDATA", 3},
    {"frametext", "", "Text Properties:", "", "", "", "", "textbx", "Text", 4},
};

constexpr const char *languages[] = {"<none>", "C/C++", "Basic", "Java", "Pascal", "SQL", "HTML", "XML"};
constexpr int firstLanguage = 3;

// The buttons beside the attribute list. Those for rows work while a row is selected.
struct AttributeButton
{
    const char *name;
    const char *caption; // "" for a picture
    const char *icon;
    const char *tip;
    const char *spoken;
    void (*act)(AttributeList &list);
    bool (*enabled)(const AttributeList &list);
};

bool always(const AttributeList &) { return true; }
bool hasSelection(const AttributeList &list) { return list.selectedRow() >= 0; }
bool hasRows(const AttributeList &list) { return list.count() > 0; }
bool isBelowAnother(const AttributeList &list) { return list.selectedRow() > 0; }

bool isAboveAnother(const AttributeList &list)
{
    return list.selectedRow() >= 0 && list.selectedRow() < list.count() - 1;
}

constexpr AttributeButton attributeButtons[] = {
    {"cmdadd", "A&dd...", "", "Insert new attribute", "Add...",
     [](AttributeList &list) { Q_EMIT list.addRequested(); }, always},
    {"cmdmodify", "&Modify...", "", "Change attribute", "Modify...",
     [](AttributeList &list) { Q_EMIT list.modifyRequested(); }, hasSelection},
    {"cmdremove", "&Remove...", "", "Remove attribute", "Remove...",
     [](AttributeList &list) { list.remove(); }, hasSelection},
    {"cmdconvert", "Remove &All", "", "", "Remove All", [](AttributeList &list) { list.removeAll(); },
     hasRows},
    {"cmdatup", "", "go-up", "Move UP", "Move UP", [](AttributeList &list) { list.moveUp(); },
     isBelowAnother},
    {"cmdatdown", "", "go-down", "Move DOWN", "Move DOWN", [](AttributeList &list) { list.moveDown(); },
     isAboveAnother},
};

// A button that has the focus does not take it along: by default some other button would get it.
void enable(QPushButton &button, bool enabled, AttributeList &list)
{
    if (!enabled && button.hasFocus())
        list.setFocus();
    button.setEnabled(enabled);
}

QPushButton *makeButton(const AttributeButton &row, AttributeList &list, QWidget *parent)
{
    auto *button = new QPushButton(latin1(row.caption), parent);
    button->setObjectName(latin1(row.name));
    button->setToolTip(latin1(row.tip));
    button->setAccessibleName(latin1(row.spoken));
    if (*row.icon != 0)
        button->setIcon(dialogs::themeIcon(latin1(row.icon)));
    QObject::connect(button, &QPushButton::clicked, &list, [&row, &list] { row.act(list); });
    QObject::connect(&list, &AttributeList::ItemClick, button,
                     [button, &row, &list] { enable(*button, row.enabled(list), list); });
    return button;
}

} // namespace

PropertiesPage::PropertiesPage(int image, QWidget *parent)
    : QGroupBox(parent), kind_(pageKinds[image - ElementImage])
{
    setObjectName(latin1(kind_.frame));
    setTitle(latin1(kind_.title));
    setAccessibleName(latin1(kind_.dialogCaption));
    auto *layout = new QVBoxLayout(this);
    if (*kind_.name != 0)
        addName(*layout);
    if (image == ElementImage)
        addAttributes(*layout);
    else
        addData(*layout);
    if (image == CDataImage)
        addSyntax(*layout);
}

void PropertiesPage::addName(QBoxLayout &layout)
{
    name_ = new QLineEdit(this);
    name_->setObjectName(latin1(kind_.name));
    name_->setAccessibleName(latin1(kind_.spokenName));
    auto *label = new QLabel(latin1(kind_.nameCaption), this);
    label->setBuddy(name_);
    auto *row = new QHBoxLayout;
    layout.addLayout(row);
    row->addWidget(label);
    row->addWidget(name_, 1);
    connect(name_, &QLineEdit::textEdited, this, [this] { Q_EMIT edited(name_); });
}

void PropertiesPage::addAttributes(QBoxLayout &layout)
{
    auto *frame = new QGroupBox(QStringLiteral("Attribute Properties"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    layout.addWidget(frame, 1);
    auto *row = new QHBoxLayout(frame);
    attributes_ = new AttributeList(frame);
    row->addWidget(attributes_, 1);
    auto *buttons = new QVBoxLayout;
    row->addLayout(buttons);
    for (const AttributeButton &button : attributeButtons)
        buttons->addWidget(makeButton(button, *attributes_, frame));
    buttons->addStretch();
    connect(attributes_, &AttributeList::edited, this, [this] { Q_EMIT edited(attributes_); });
}

void PropertiesPage::addData(QBoxLayout &layout)
{
    data_ = makeBox(latin1(kind_.data), latin1(kind_.spokenData), this);
    if (*kind_.dataCaption != 0) {
        auto *label = new QLabel(latin1(kind_.dataCaption), this);
        label->setBuddy(data_);
        layout.addWidget(label);
    }
    layout.addWidget(data_, 1);
    connect(data_, &control::CodeEditor::textEdited, this, [this] { Q_EMIT edited(data_); });
}

// Stands above the box; made after it, since the choice acts on the box at once.
void PropertiesPage::addSyntax(QBoxLayout &layout)
{
    auto *combo = new QComboBox(this);
    combo->setObjectName(QStringLiteral("Combo1"));
    combo->setAccessibleName(QStringLiteral("Syntax Highlight"));
    for (const char *language : languages)
        combo->addItem(latin1(language));
    auto *label = new QLabel(QStringLiteral("Syntax &Highlight:"), this);
    label->setBuddy(combo);
    auto *row = new QHBoxLayout;
    layout.insertLayout(0, row);
    row->addWidget(label);
    row->addWidget(combo);
    row->addStretch();
    setTabOrder(combo, data_);
    auto *colours = new control::CodeColours(*data_);
    connect(combo, &QComboBox::currentTextChanged, data_,
            [colours](const QString &language) { colours->setLanguage(language); });
    combo->setCurrentIndex(firstLanguage);
}

QString PropertiesPage::dialogCaption() const { return latin1(kind_.dialogCaption); }

int PropertiesPage::symbolTarget() const { return kind_.symbolTarget; }

QWidget *PropertiesPage::contentField() const
{
    return attributes_ ? static_cast<QWidget *>(attributes_) : data_;
}

void PropertiesPage::fill(const NodeProperties &properties)
{
    if (name_)
        name_->setText(properties.name);
    if (attributes_)
        attributes_->fill(properties.attributes);
    if (data_)
        loadData(*data_, properties.data);
}

NodeProperties PropertiesPage::properties() const
{
    NodeProperties out;
    if (name_)
        out.name = name_->text();
    if (attributes_)
        out.attributes = attributes_->rows();
    if (data_)
        out.data = dataOf(*data_);
    return out;
}

} // namespace tree
