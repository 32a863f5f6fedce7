#include "editor/character_map.h"

#include "editor/character_grid.h"
#include "editor/large_character.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace editor {

namespace {

constexpr int enlargement = 3;
constexpr int fontBoxLength = 24; // characters

QLabel *labelFor(QWidget *box, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setBuddy(box);
    return label;
}

// Keeps its selection while characters are picked in the grid, so that it is seen what they will replace.
class CollectingField : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

protected:
    void focusOutEvent(QFocusEvent *event) override
    {
        const int start = selectionStart();
        const int length = selectionLength();
        QLineEdit::focusOutEvent(event);
        if (length > 0)
            setSelection(start, length);
    }
};

} // namespace

frmCharacterMap::frmCharacterMap(QWidget *parent, std::function<void(const QString &)> insert)
    : QDialog(parent), insert_(std::move(insert)), cboFont(new QComboBox(this)),
      picCharacterMap(new CharacterGrid(this)), lblName(new QLabel(this)),
      txtChars(new CollectingField(this)), cmdInsert(new QPushButton(QStringLiteral("&Insert"), this)),
      cmdcancel(new QPushButton(QStringLiteral("Cancel"), this)), picShadow(new LargeShadow(this)),
      picLarge(new LargeCharacter(this))
{
    setObjectName(QStringLiteral("frmCharacterMap"));
    setWindowTitle(QStringLiteral("Symbols"));
    cboFont->setObjectName(QStringLiteral("cboFont"));
    picCharacterMap->setObjectName(QStringLiteral("picCharacterMap"));
    lblName->setObjectName(QStringLiteral("lblName"));
    txtChars->setObjectName(QStringLiteral("txtChars"));
    cmdInsert->setObjectName(QStringLiteral("cmdInsert"));
    cmdcancel->setObjectName(QStringLiteral("cmdcancel"));
    picShadow->setObjectName(QStringLiteral("picShadow"));
    picLarge->setObjectName(QStringLiteral("picLarge"));
    picCharacterMap->setAccessibleName(QStringLiteral("Characters"));
    picCharacterMap->setAccessibleDescription(
        QStringLiteral("Double-click a character, type it or press Enter on it to copy it"));
    fillFonts();
    layOut();
    connectControls();
    showCurrent();
    picCharacterMap->setFocus();
}

// A visible grid loses the focus on its way out, and would tell somebody who is no longer there.
frmCharacterMap::~frmCharacterMap() { picCharacterMap->disconnect(this); }

void frmCharacterMap::fillFonts()
{
    cboFont->addItems(QFontDatabase::families());
    cboFont->setMinimumContentsLength(fontBoxLength);
    cboFont->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboFont->setCurrentText(picCharacterMap->fontFamily());
}

void frmCharacterMap::layOut()
{
    auto *font = new QHBoxLayout;
    font->addWidget(labelFor(cboFont, QStringLiteral("&Font:"), this));
    font->addWidget(cboFont);
    font->addStretch(1);

    auto *collected = new QHBoxLayout;
    collected->addWidget(labelFor(txtChars, QStringLiteral("Ch&aracters to Copy:"), this));
    collected->addWidget(txtChars, 1);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdInsert, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdcancel, QDialogButtonBox::RejectRole);
    cmdInsert->setDefault(true);

    auto *whole = new QVBoxLayout(this);
    whole->addLayout(font);
    whole->addWidget(labelFor(picCharacterMap, QStringLiteral("C&haracters:"), this));
    whole->addWidget(picCharacterMap, 1);
    whole->addWidget(lblName);
    whole->addLayout(collected);
    whole->addWidget(buttons);

    picShadow->raise();
    picLarge->raise();
    setTabOrder(cboFont, picCharacterMap);
    setTabOrder(picCharacterMap, txtChars);
    setTabOrder(txtChars, cmdInsert);
    setTabOrder(cmdInsert, cmdcancel);
}

void frmCharacterMap::connectControls()
{
    connect(cboFont, &QComboBox::currentTextChanged, this, [this](const QString &family) {
        picCharacterMap->setFontFamily(family);
        showCurrent();
    });
    connect(picCharacterMap, &CharacterGrid::currentChanged, this, &frmCharacterMap::showCurrent);
    connect(picCharacterMap, &CharacterGrid::enlargeRequested, this, &frmCharacterMap::enlarge);
    connect(picCharacterMap, &CharacterGrid::picked, txtChars,
            [this](QChar character) { txtChars->insert(character); });
    connect(cmdInsert, &QPushButton::clicked, this, &frmCharacterMap::insertCollected);
    connect(cmdcancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCharacterMap::showCurrent()
{
    lblName->setText(characterName(picCharacterMap->current()));
    picLarge->showCharacter(picCharacterMap->current(), picCharacterMap->fontFamily());
    placeLarge();
}

void frmCharacterMap::enlarge(bool wanted)
{
    placeLarge();
    picShadow->setVisible(wanted);
    picLarge->setVisible(wanted);
}

void frmCharacterMap::placeLarge()
{
    const QRect cell = picCharacterMap->cellRect(picCharacterMap->current());
    const QRect inDialog(picCharacterMap->mapTo(this, cell.topLeft()), cell.size());
    const QRect place = largePlace(inDialog, cell.size() * enlargement, rect());
    picLarge->setGeometry(place);
    picShadow->setGeometry(place.translated(shadowOffset, shadowOffset));
}

void frmCharacterMap::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    layout()->activate();
    placeLarge();
}

void frmCharacterMap::insertCollected()
{
    if (!txtChars->text().isEmpty())
        insert_(txtChars->text());
    accept();
}

} // namespace editor
