#include "editor/options_page.h"

#include "editor/sample_editor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyle>
#include <algorithm>
#include <limits>

namespace editor {

namespace {

using Properties = control::EditorProperties;

struct Switch
{
    bool Properties::*of;
    const char *name;
    const char *caption;
    bool typing; // otherwise something shown
    const char *tip;
};

// clang-format off
constexpr Switch table[] = {
    {&Properties::lineNumbering, "chkLineNumbers", "Line &numbers", false, ""},
    {&Properties::leftMargin, "chkLeftMargin", "Left margin, with the &bookmarks", false, ""},
    {&Properties::selectionBounds, "chkSelectionBounds", "Bounds of the &selection in the left margin", false, ""},
    {&Properties::lineToolTips, "chkLineToolTips", "Line &tool tips while scrolling", false,
     "Tells the line that the text is scrolled to while its bar is dragged."},
    {&Properties::whiteSpace, "chkWhiteSpace", "&White space as dots and arrows", false, ""},
    {&Properties::closeOnSlash, "chkCloseOnSlash", "Closin&g tag on \"</\"", true, ""},
    {&Properties::closeOnBracket, "chkCloseOnBracket", "Clos&ing tag on \">\"", true, ""},
    {&Properties::renameBoth, "chkRenameBoth", "&Rename both tags", true, "A tag's name is changed in its partner too."},
    {&Properties::autoIndent, "chkAutoIndent", "A&utomatic indentation", true, ""},
    {&Properties::offerNames, "chkOfferNames", "Offer nam&es known from the document", true, ""},
    {&Properties::dragText, "chkDragText", "Drag te&xt to another place", true, ""},
};
// clang-format on

constexpr struct
{
    control::NumberingStyle style;
    const char *caption;
} numberingStyles[] = {
    {control::NumberingStyle::Decimal, "Decimal"},
    {control::NumberingStyle::Hexadecimal, "Hexadecimal"},
    {control::NumberingStyle::EveryTenth, "Every tenth line"},
    {control::NumberingStyle::FromCaret, "Distance from the caret"},
};

} // namespace

OptionsPage::OptionsPage(EditorDraft &draft, QWidget *parent)
    : PropertiesPage(draft, parent), shown_(new QGroupBox(tr("Shown"), this)),
      typing_(new QGroupBox(tr("While typing"), this)), numbering_(new QWidget(shown_)),
      style_(new QComboBox(numbering_)), start_(new QSpinBox(numbering_)), sample_(new SampleEditor(this))
{
    style_->setObjectName(QStringLiteral("cboNumberingStyle"));
    start_->setObjectName(QStringLiteral("spnNumberingStart"));
    addSwitches();
    addNumbering();
    layOut();
    connectNumbering();
}

void OptionsPage::addSwitches()
{
    for (const Switch &row : table) {
        auto *box = new QCheckBox(tr(row.caption), row.typing ? typing_ : shown_);
        box->setObjectName(QString::fromLatin1(row.name));
        box->setToolTip(QString::fromLatin1(row.tip));
        switches_.append(box);
        connect(box, &QCheckBox::clicked, this, [this, &row](bool on) {
            draft_.properties.*(row.of) = on;
            showChange();
        });
    }
}

void OptionsPage::addNumbering()
{
    for (const auto &row : numberingStyles)
        style_->addItem(tr(row.caption), int(row.style));
    start_->setToolTip(
        tr("The margin and the tool tips count from here; the status bar and Go to Line always "
           "count from 1."));
    start_->setRange(std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    auto *fields = new QFormLayout(numbering_);
    fields->addRow(tr("St&yle:"), style_);
    fields->addRow(tr("First nu&mber:"), start_);
    const int indent = style()->pixelMetric(QStyle::PM_IndicatorWidth)
        + style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
    fields->setContentsMargins(indent, 0, 0, 0);
}

void OptionsPage::layOut()
{
    auto *shown = new QVBoxLayout(shown_);
    auto *typing = new QVBoxLayout(typing_);
    for (int i = 0; i < switches_.size(); ++i) {
        (table[i].typing ? typing : shown)->addWidget(switches_.at(i));
        if (table[i].of == &Properties::lineNumbering)
            shown->addWidget(numbering_);
    }
    shown->addStretch();
    typing->addStretch();
    auto *groups = new QHBoxLayout;
    groups->addWidget(shown_);
    groups->addWidget(typing_);
    auto *whole = new QVBoxLayout(this);
    whole->addLayout(groups);
    whole->addWidget(sample_, 1);
    for (int i = 0; i < switches_.size(); ++i)
        if (i > 0)
            setTabOrder(switches_.at(i - 1), switches_.at(i));
    setTabOrder(switches_.first(), style_);
    setTabOrder(style_, start_);
}

void OptionsPage::connectNumbering()
{
    connect(style_, &QComboBox::activated, this, [this] {
        draft_.properties.numberingStyle = style_->currentData().toInt();
        showChange();
    });
    connect(start_, &QSpinBox::valueChanged, this, [this](int first) {
        draft_.properties.numberingStart = first;
        showChange();
    });
}

void OptionsPage::showDraft()
{
    const Properties &shown = draft_.properties;
    for (int i = 0; i < switches_.size(); ++i)
        switches_.at(i)->setChecked(shown.*(table[i].of));
    style_->setCurrentIndex(std::max(0, style_->findData(shown.numberingStyle)));
    const QSignalBlocker still(start_);
    start_->setValue(shown.numberingStart);
    numbering_->setEnabled(shown.lineNumbering);
    sample_->setProperties(shown);
}

void OptionsPage::showChange()
{
    numbering_->setEnabled(draft_.properties.lineNumbering);
    sample_->setProperties(draft_.properties);
    Q_EMIT changed();
}

void OptionsPage::restoreDefaults()
{
    const Properties first;
    for (const Switch &row : table)
        draft_.properties.*(row.of) = first.*(row.of);
    draft_.properties.numberingStyle = first.numberingStyle;
    draft_.properties.numberingStart = first.numberingStart;
    showDraft();
    Q_EMIT changed();
}

} // namespace editor
