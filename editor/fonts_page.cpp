#include "editor/fonts_page.h"

#include "editor/colour_classes.h"
#include "editor/point_size_box.h"
#include "editor/sample_editor.h"
#include "platform/control/editor_look.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace editor {

namespace {

struct Manner
{
    bool control::EditorFont::*of;
    const char *name;
    const char *caption;
};

constexpr Manner manners[] = {
    {&control::EditorFont::bold, "chkBold", "&Bold"},
    {&control::EditorFont::italic, "chkItalic", "&Italic"},
    {&control::EditorFont::underline, "chkUnderline", "&Underline"},
    {&control::EditorFont::strikethrough, "chkStrikethrough", "&Strike-through"},
};

enum Column
{
    BoldColumn,
    ItalicColumn,
    RestColumn, // takes what room is left, and holds nothing
    Columns
};

constexpr int bitOf(int column) { return column == BoldColumn ? control::Bold : control::Italic; }

QStringList fixedFaces()
{
    QStringList faces;
    for (const QString &face : QFontDatabase::families())
        if (QFontDatabase::isFixedPitch(face) && !QFontDatabase::isPrivateFamily(face))
            faces.append(face);
    return faces;
}

QTableWidgetItem *checkItem(const QString &subject)
{
    auto *item = new QTableWidgetItem;
    item->setCheckState(Qt::Unchecked);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setData(Qt::AccessibleTextRole, subject);
    return item;
}

} // namespace

FontsPage::FontsPage(EditorDraft &draft, QWidget *parent)
    : PropertiesPage(draft, parent), face_(new QComboBox(this)), size_(new PointSizeBox(this)),
      styles_(new QTableWidget(control::styleSlots, Columns, this)), sample_(new SampleEditor(this))
{
    face_->setObjectName(QStringLiteral("cboFace"));
    size_->setObjectName(QStringLiteral("spnSize"));
    styles_->setObjectName(QStringLiteral("tblStyles"));
    styles_->setAccessibleName(tr("Styles of the parts of the text"));
    face_->addItems(fixedFaces());
    for (const Manner &manner : manners) {
        auto *box = new QCheckBox(tr(manner.caption), this);
        box->setObjectName(QString::fromLatin1(manner.name));
        manners_.append(box);
    }
    addStyles();
    layOut();
    connectControls();
}

void FontsPage::addStyles()
{
    styles_->setHorizontalHeaderLabels({tr("Bold"), tr("Italic"), QString()});
    styles_->setTabKeyNavigation(false);
    styles_->setSelectionMode(QAbstractItemView::SingleSelection);
    styles_->verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (int slot = 0; slot < control::styleSlots; ++slot) {
        const QString label = tr(control::styleSlotTable()[size_t(slot)].label);
        styles_->setVerticalHeaderItem(slot, new QTableWidgetItem(label));
        styles_->setItem(slot, BoldColumn, checkItem(tr("%1, bold").arg(label)));
        styles_->setItem(slot, ItalicColumn, checkItem(tr("%1, italic").arg(label)));
    }
    for (QHeaderView *header : {styles_->horizontalHeader(), styles_->verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::ResizeToContents);
        header->setHighlightSections(false);
    }
    styles_->horizontalHeader()->setStretchLastSection(true);
    styles_->setWordWrap(false);
    // Empty boxes are in the colour of a list, and would not be seen on it in a dark palette.
    styles_->viewport()->setBackgroundRole(QPalette::Window);
    styles_->setCurrentCell(0, 0);
}

void FontsPage::layOut()
{
    auto *fields = new QFormLayout;
    fields->addRow(tr("Fac&e:"), face_);
    fields->addRow(tr("Si&ze:"), size_);
    auto *boxes = new QGridLayout;
    for (int i = 0; i < manners_.size(); ++i)
        boxes->addWidget(manners_.at(i), i / 2, i % 2);
    auto *stylesLabel = new QLabel(tr("St&yles of the parts of the text:"), this);
    stylesLabel->setBuddy(styles_);
    auto *left = new QVBoxLayout;
    left->addLayout(fields);
    left->addLayout(boxes);
    left->addWidget(stylesLabel);
    left->addWidget(styles_, 1);
    auto *whole = new QHBoxLayout(this);
    whole->addLayout(left);
    whole->addWidget(sample_, 1);
    styles_->resizeColumnsToContents();
    styles_->setMinimumWidth(styles_->verticalHeader()->sizeHint().width()
                             + styles_->horizontalHeader()->length()
                             + styles_->verticalScrollBar()->sizeHint().width() + 2 * styles_->frameWidth());
}

void FontsPage::connectControls()
{
    connect(face_, &QComboBox::activated, this, [this] {
        draft_.properties.font.name = face_->currentText();
        showChange();
    });
    connect(size_, &QDoubleSpinBox::valueChanged, this, [this](double points) {
        draft_.properties.font.size = points;
        showChange();
    });
    for (int i = 0; i < manners_.size(); ++i) {
        connect(manners_.at(i), &QCheckBox::clicked, this, [this, i](bool on) {
            draft_.properties.font.*(manners[i].of) = on;
            showChange();
        });
    }
    connect(styles_, &QTableWidget::itemChanged, this,
            [this](const QTableWidgetItem *item) { takeStyle(*item); });
    connect(styles_, &QTableWidget::currentCellChanged, this, &FontsPage::pointAtCurrent);
}

void FontsPage::showDraft()
{
    const control::EditorFont &font = draft_.properties.font;
    showFace();
    const QSignalBlocker still(size_);
    size_->setValue(font.size);
    for (int i = 0; i < manners_.size(); ++i)
        manners_.at(i)->setChecked(font.*(manners[i].of));
    showStyles();
    sample_->setProperties(draft_.properties);
    pointAtCurrent();
}

// The editor always has a face that is installed; it may have come by after the list of them was made.
void FontsPage::showFace()
{
    const QString face = draft_.properties.font.name;
    if (face_->findText(face, Qt::MatchFixedString) < 0)
        face_->addItem(face);
    face_->setCurrentIndex(face_->findText(face, Qt::MatchFixedString));
}

void FontsPage::showStyles()
{
    const QSignalBlocker still(styles_);
    for (int slot = 0; slot < control::styleSlots; ++slot)
        for (const int column : {BoldColumn, ItalicColumn})
            styles_->item(slot, column)
                ->setCheckState((draft_.properties.styles[size_t(slot)] & bitOf(column)) != 0
                                    ? Qt::Checked
                                    : Qt::Unchecked);
}

void FontsPage::takeStyle(const QTableWidgetItem &item)
{
    int &style = draft_.properties.styles[size_t(item.row())];
    const int bit = bitOf(item.column());
    style = item.checkState() == Qt::Checked ? style | bit : style & ~bit;
    showChange();
}

void FontsPage::showChange()
{
    sample_->setProperties(draft_.properties);
    Q_EMIT changed();
}

void FontsPage::pointAtCurrent()
{
    const QTableWidgetItem *row = styles_->verticalHeaderItem(styles_->currentRow());
    const ColourClass *shown = row == nullptr ? nullptr : findColourClass(row->text());
    if (shown != nullptr)
        sample_->pointAt(*shown);
}

void FontsPage::restoreDefaults()
{
    const control::EditorProperties first;
    draft_.properties.font = first.font;
    draft_.properties.font.name = control::fixedPitchFace(first.font.name);
    draft_.properties.styles = first.styles;
    showDraft();
    Q_EMIT changed();
}

} // namespace editor
