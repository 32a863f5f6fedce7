#include "editor/colours_page.h"

#include "editor/colour_button.h"
#include "editor/colour_classes.h"
#include "editor/sample_editor.h"
#include "platform/control/colour_reading.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace editor {

ColoursPage::ColoursPage(EditorDraft &draft, QWidget *parent)
    : PropertiesPage(draft, parent), classes_(new QListWidget(this)), what_(new QLabel(this)),
      sample_(new SampleEditor(this))
{
    classes_->setObjectName(QStringLiteral("lstColours"));
    classes_->setAccessibleName(tr("Parts of the text"));
    what_->setObjectName(QStringLiteral("lblWhat"));
    what_->setWordWrap(true);
    for (const ColourClass &row : colourClasses())
        classes_->addItem(row.label());
    addChoice(Ink, "Ink", tr("Fore&ground:"), tr("As t&he desktop"));
    addChoice(Ground, "Ground", tr("&Background:"), tr("As the de&sktop"));
    layOut();
    connect(classes_, &QListWidget::currentRowChanged, this, &ColoursPage::showClass);
    connect(sample_, &SampleEditor::classClicked, this, [this](const QString &label) {
        classes_->setCurrentItem(classes_->findItems(label, Qt::MatchExactly).value(0));
    });
    classes_->setCurrentRow(0);
}

void ColoursPage::addChoice(Part part, const char *name, const QString &caption, const QString &follows)
{
    const QString suffix = QString::fromLatin1(name);
    auto &choice = choices_[part];
    choice.label = new QLabel(caption, this);
    choice.button = new ColourButton(this);
    choice.button->setObjectName(QStringLiteral("cmd") + suffix);
    choice.label->setBuddy(choice.button);
    choice.follows = new QCheckBox(follows, this);
    choice.follows->setAccessibleName(part == Ink ? tr("Foreground as the desktop")
                                                  : tr("Background as the desktop"));
    choice.follows->setObjectName(QStringLiteral("chkFollows") + suffix);
    connect(choice.button, &ColourButton::colourChosen, this,
            [this, part](qint32 colour) { choose(part, colour); });
    connect(choice.follows, &QCheckBox::clicked, this, [this, part](bool follow) {
        choose(part, follow ? control::noColour : editorColour(followed(slotOf(part))));
    });
}

void ColoursPage::layOut()
{
    auto *label = new QLabel(tr("Pa&rts of the text:"), this);
    label->setBuddy(classes_);
    auto *choices = new QGridLayout;
    for (const Part part : {Ink, Ground}) {
        choices->addWidget(choices_[part].label, part, 0);
        choices->addWidget(choices_[part].button, part, 1);
        choices->addWidget(choices_[part].follows, part, 2);
    }
    choices->setColumnStretch(2, 1);
    auto *right = new QVBoxLayout;
    right->addWidget(what_);
    right->addLayout(choices);
    right->addWidget(sample_, 1);
    // Two lines of text in every case, so that nothing below moves from class to class.
    what_->setMinimumHeight(2 * what_->fontMetrics().lineSpacing());
    what_->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto *whole = new QGridLayout(this);
    whole->addWidget(label, 0, 0);
    whole->addWidget(classes_, 1, 0);
    whole->addLayout(right, 1, 1);
    whole->setColumnStretch(1, 1);
    classes_->setFixedWidth(classes_->sizeHintForColumn(0) + fontMetrics().averageCharWidth() * 10);
}

const ColourClass &ColoursPage::current() const
{
    return colourClasses()[size_t(std::max(0, classes_->currentRow()))];
}

int ColoursPage::slotOf(Part part) const { return part == Ink ? current().ink : current().ground; }

QColor ColoursPage::followed(int slot) const
{
    control::EditorProperties properties = draft_.properties;
    properties.colours[size_t(slot)] = control::noColour;
    return shownIn(control::Look(properties, palette()), slot);
}

void ColoursPage::showDraft()
{
    sample_->setProperties(draft_.properties);
    for (int row = 0; row < classes_->count(); ++row)
        showSwatch(row);
    showClass();
}

void ColoursPage::showSwatch(int row)
{
    const ColourClass &shown = colourClasses()[size_t(row)];
    const control::Look look(draft_.properties, palette());
    const int ground = shown.ground < 0 ? int(control::WindowGround) : shown.ground;
    const QIcon swatch
        = colourSwatch(*classes_, shownIn(look, ground), shown.ink < 0 ? QColor() : shownIn(look, shown.ink));
    classes_->setIconSize(swatchSize(*classes_));
    classes_->item(row)->setIcon(swatch);
}

void ColoursPage::showClass()
{
    QString text = tr(current().what);
    if (control::Look(draft_.properties, palette()).dark)
        text += tr(
            " Colours that were never changed are shown so that they can be read on a dark background.");
    what_->setText(text);
    sample_->pointAt(current());
    for (const Part part : {Ink, Ground})
        showChoice(part);
}

void ColoursPage::showChoice(Part part)
{
    const Choice &choice = choices_[part];
    const int slot = slotOf(part);
    const qint32 colour = slot < 0 ? control::noColour : draft_.properties.colours[size_t(slot)];
    choice.label->setEnabled(slot >= 0);
    choice.button->setEnabled(slot >= 0);
    choice.follows->setEnabled(slot >= 0);
    choice.follows->setChecked(slot >= 0 && colour < 0);
    choice.button->setSubject(
        (part == Ink ? tr("%1, foreground") : tr("%1, background")).arg(current().label()));
    choice.button->showColour(colour, slot < 0 ? palette().color(QPalette::Window) : followed(slot));
    if (slot < 0)
        choice.button->setText(tr("None"));
}

void ColoursPage::choose(Part part, qint32 colour)
{
    draft_.properties.colours[size_t(slotOf(part))] = colour;
    sample_->setProperties(draft_.properties);
    showSwatch(classes_->currentRow());
    showChoice(part);
    Q_EMIT changed();
}

void ColoursPage::changeEvent(QEvent *event)
{
    PropertiesPage::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showDraft();
}

void ColoursPage::restoreDefaults()
{
    draft_.properties.colours = control::EditorProperties().colours;
    showDraft();
    Q_EMIT changed();
}

} // namespace editor
