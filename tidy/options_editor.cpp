#include "tidy/options_editor.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <limits>

namespace tidy {

namespace {

constexpr int editorCount = int(OptionKind::FixedYesNo);

OptionKind kindOf(int index) { return optionCatalogue()[size_t(index)].kind; }

QPushButton *button(const char *name, const QString &caption, QWidget *parent)
{
    auto *made = new QPushButton(caption, parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    return made;
}

QLineEdit *field(const QString &name, const QString &accessibleName, QWidget *parent)
{
    auto *made = new QLineEdit(parent);
    made->setObjectName(name);
    made->setAccessibleName(accessibleName);
    made->setMaxLength(std::numeric_limits<int>::max());
    return made;
}

} // namespace

OptionsEditor::OptionsEditor(QWidget *parent)
    : QGroupBox(parent), lblcurrent(new QLabel(this)), editors_(new QStackedWidget(this)),
      cmdapply(button("cmdapply", QStringLiteral("Apply"), this)),
      cmdcanceledit(button("cmdcanceledit", QStringLiteral("Cancel"), this))
{
    setObjectName(QStringLiteral("fraedit"));
    lblcurrent->setObjectName(QStringLiteral("lblcurrent"));
    lblcurrent->setTextFormat(Qt::PlainText);
    lblcurrent->setWordWrap(true);
    makeEditors();
    layOut();
    connect(cmdapply, &QPushButton::clicked, this, &OptionsEditor::apply);
    connect(cmdcanceledit, &QPushButton::clicked, this, &OptionsEditor::hidcomb);
    hide();
}

void OptionsEditor::makeEditors()
{
    const QString value = QStringLiteral("Value");
    for (int editor = 0; editor < editorCount; ++editor) {
        auto *page = new QWidget(editors_);
        auto *row = new QHBoxLayout(page);
        row->setContentsMargins(0, 0, 0, 0);
        const QStringList offered = offeredValues(OptionKind(editor));
        const QString name = QStringLiteral("editor%1").arg(editor);
        if (OptionKind(editor) == OptionKind::Number) {
            row->addWidget(number_ = new QSpinBox(page));
            number_->setRange(0, largestNumber);
            number_->setObjectName(name);
            number_->setAccessibleName(value);
        } else if (offered.isEmpty()) {
            row->addWidget(fields_[editor] = field(name, value, page));
        } else {
            row->addWidget(lists_[editor] = new QComboBox(page));
            lists_[editor]->addItems(offered);
            lists_[editor]->setObjectName(name);
            lists_[editor]->setAccessibleName(value);
        }
        editors_->addWidget(page);
    }
    QComboBox *doctype = lists_[int(OptionKind::Doctype)];
    userDoctype_ = field(QStringLiteral("txtuser"), QStringLiteral("User DOCTYPE"), doctype->parentWidget());
    static_cast<QHBoxLayout *>(doctype->parentWidget()->layout())->addWidget(userDoctype_, 1);
    connect(doctype, &QComboBox::currentTextChanged, this,
            [this](const QString &chosen) { userDoctype_->setEnabled(chosen == userDoctype()); });
}

void OptionsEditor::layOut()
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblcurrent);
    auto *row = new QHBoxLayout;
    layout->addLayout(row);
    row->addWidget(editors_, 1);
    row->addWidget(cmdapply);
    row->addWidget(cmdcanceledit);
}

bool OptionsEditor::edit(int index, const QString &value)
{
    if (!isListed(index) || kindOf(index) >= OptionKind::FixedYesNo)
        return false;
    index_ = index;
    editor_ = int(kindOf(index));
    current_ = value;
    setTitle(QStringLiteral("Edit ") + optionCatalogue()[size_t(index)].nameText());
    lblcurrent->setText(QStringLiteral("Current: ") + value);
    preset(kindOf(index));
    editors_->setCurrentIndex(editor_);
    show();
    fieldOf(editor_)->setFocus();
    return true;
}

// A value that a list does not offer leaves nothing chosen, and applying nothing changes nothing.
void OptionsEditor::preset(OptionKind kind)
{
    if (kind == OptionKind::Doctype)
        comfive();
    else if (QComboBox *offered = lists_[editor_])
        offer(*offered);
    else if (kind == OptionKind::Number)
        number_->setValue(current_.toInt());
    else
        fields_[editor_]->setText(current_);
    if (kind == OptionKind::Number)
        number_->selectAll();
    else if (fields_[editor_])
        fields_[editor_]->selectAll();
}

// The default can always be chosen, also where it is none of the kind's values.
void OptionsEditor::offer(QComboBox &list) const
{
    QStringList values = offeredValues(OptionKind(editor_));
    if (const QString usual = defaultValue(index_); !values.contains(usual))
        values << usual;
    list.clear();
    list.addItems(values);
    list.setCurrentIndex(list.findText(current_, Qt::MatchFixedString));
}

void OptionsEditor::comfive()
{
    QComboBox *offered = lists_[int(OptionKind::Doctype)];
    const int own = offered->findText(userDoctype());
    const int found = offered->findText(current_, Qt::MatchFixedString);
    offered->setCurrentIndex(found < 0 ? own : found);
    userDoctype_->setText(found < 0 ? current_ : QString());
    userDoctype_->setEnabled(offered->currentIndex() == own);
}

QString OptionsEditor::editedValue() const
{
    if (OptionKind(editor_) == OptionKind::Number)
        return QString::number(number_->value());
    if (OptionKind(editor_) == OptionKind::TagList)
        return normalisedTagList(fields_[editor_]->text());
    if (fields_[editor_])
        return fields_[editor_]->text();
    const QString chosen = lists_[editor_]->currentText();
    if (OptionKind(editor_) == OptionKind::Doctype && chosen == userDoctype())
        return userDoctype_->text();
    return chosen.isEmpty() ? current_ : chosen;
}

void OptionsEditor::apply()
{
    const int index = index_;
    const QString value = editedValue();
    Q_EMIT applied(index, value);
    hidcomb();
}

void OptionsEditor::hidcomb()
{
    if (index_ < 0)
        return;
    index_ = -1;
    editor_ = -1;
    hide();
    Q_EMIT closed();
}

QWidget *OptionsEditor::fieldOf(int editor) const
{
    if (OptionKind(editor) == OptionKind::Number)
        return number_;
    return fields_[editor] ? static_cast<QWidget *>(fields_[editor]) : lists_[editor];
}

// Enter applies and Escape drops, wherever in the panel the focus is, and neither ends the dialog.
void OptionsEditor::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape || (isEnter && cmdcanceledit->hasFocus()))
        hidcomb();
    else if (isEnter)
        apply();
    else
        QGroupBox::keyPressEvent(event);
}

} // namespace tidy
