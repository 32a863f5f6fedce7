#include "tree/attpropfrm.h"

#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/window_size.h"
#include "tree/attribute_list.h"
#include "tree/properties.h"
#include "tree/properties_fault.h"
#include "tree/propfrm.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <limits>

namespace tree {

namespace {

constexpr int usualColumns = 70;

QLineEdit *makeField(const QString &name, const QString &accessibleName, QWidget *parent)
{
    auto *field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setAccessibleName(accessibleName);
    field->setMaxLength(std::numeric_limits<int>::max());
    return field;
}

QPushButton *makeButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

bool isAnotherWindows(const QFocusEvent &event)
{
    return event.reason() == Qt::ActiveWindowFocusReason || event.reason() == Qt::PopupFocusReason;
}

bool isForFocus(int key)
{
    return key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Alt || key == Qt::Key_Shift;
}

} // namespace

attpropfrm::attpropfrm(PropertyServices &services, AttributeList &list, QWidget *parent)
    : QDialog(parent), services_(services), list_(list), Check1(new QCheckBox(this)),
      txtname(makeField(QStringLiteral("txtname"), QStringLiteral("Attribute Name"), this)),
      txtvalue(makeField(QStringLiteral("txtvalue"), QStringLiteral("Attribute Value"), this)),
      nameReason_(makeReason(QStringLiteral("lblname"), this)),
      valueReason_(makeReason(QStringLiteral("lblvalue"), this)),
      cmdsynbols(makeButton(QStringLiteral("cmdsynbols"), QStringLiteral("&Symbols..."), this)),
      cmdOK(makeButton(QStringLiteral("cmdOK"), QStringLiteral("OK"), this)),
      cmdcancel(makeButton(QStringLiteral("cmdcancel"), QStringLiteral("Cancel"), this)), lastField_(txtname)
{
    setObjectName(QStringLiteral("attpropfrm"));
    setWindowTitle(QStringLiteral("Attribute Name and Value"));
    Check1->setObjectName(QStringLiteral("Check1"));
    Check1->hide();
    layOut();
    cmdOK->setDefault(true);
    cmdsynbols->setEnabled(bool(services_.showSymbols));
    cmdsynbols->setFocusPolicy(Qt::TabFocus); // a click leaves the field its focus and its selection
    connect(cmdOK, &QPushButton::clicked, this, &attpropfrm::accept);
    connect(cmdcancel, &QPushButton::clicked, this, &attpropfrm::reject);
    connect(cmdsynbols, &QPushButton::clicked, this, &attpropfrm::cmdsynbols_Click);
    for (QLineEdit *field : {txtname, txtvalue}) {
        field->installEventFilter(this);
        QLabel *label = field == txtname ? nameReason_ : valueReason_;
        connect(field, &QLineEdit::textChanged, this, [this, field, label] { refuse(field, label, {}); });
    }
}

void attpropfrm::layOut()
{
    auto *layout = new QVBoxLayout(this);
    const auto addField = [this, layout](const QString &caption, QLineEdit *field, QLabel *reason) {
        auto *label = new QLabel(caption, this);
        label->setBuddy(field);
        layout->addWidget(label);
        layout->addWidget(field);
        layout->addWidget(reason);
    };
    addField(QStringLiteral("Enter Attribute &Name, here:"), txtname, nameReason_);
    addField(QStringLiteral("Enter Attribute &Value, here:"), txtvalue, valueReason_);
    layout->addStretch();
    auto *buttons = new QHBoxLayout;
    layout->addLayout(buttons);
    buttons->addWidget(cmdsynbols);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdcancel);
    resize(dialogs::sizeInCharacters(*this, usualColumns, 0).width(), sizeHint().height());
}

void attpropfrm::openToAdd()
{
    Check1->setChecked(true);
    start({}, {}, txtname);
}

void attpropfrm::openToChange()
{
    if (list_.selectedRow() < 0)
        return;
    Check1->setChecked(false);
    const dom::Attribute row = list_.selected();
    start(row.name, row.value, txtvalue);
}

void attpropfrm::start(const QString &name, const QString &value, QLineEdit *first)
{
    txtname->setText(name);
    txtvalue->setText(value);
    refuse(txtname, nameReason_, {});
    refuse(txtvalue, valueReason_, {});
    lastField_ = first;
    touched_ = false;
    selectionStart_ = -1;
    first->setFocus();
    first->selectAll();
    open();
}

bool attpropfrm::attrexst(const QString &name) const { return list_.hasName(name); }

void attpropfrm::refuse(QLineEdit *field, QLabel *label, const QString &reason)
{
    label->setText(reason);
    markFault(field, reason);
    if (!reason.isEmpty())
        field->setFocus();
}

// A name that goes with no value either is to blame itself.
bool attpropfrm::isRefused()
{
    const auto verdict = checkAttribute(txtname->text(), txtvalue->text());
    if (verdict)
        return false;
    if (const auto ofName = checkAttribute(txtname->text(), QStringLiteral("a")); !ofName)
        refuse(txtname, nameReason_, ofName.reason());
    else
        refuse(txtvalue, valueReason_, verdict.reason());
    return true;
}

void attpropfrm::accept()
{
    const QString name = txtname->text();
    if (name.isEmpty())
        return reject();
    if (Check1->isChecked() && attrexst(name)) {
        services_.dialogs.message(dialogs::Icon::Exclamation, dialogs::Buttons::Ok,
                                  QStringLiteral("The Attribute Name \"%1\" already exist!").arg(name));
        txtname->setFocus();
        txtname->selectAll();
        return;
    }
    if (isRefused())
        return;
    if (Check1->isChecked())
        list_.add(name, txtvalue->text());
    else
        list_.change(name, txtvalue->text());
    QDialog::accept();
}

void attpropfrm::cmdsynbols_Click()
{
    services_.symbolTarget = 0;
    services_.showSymbols(services_.symbolTarget, this);
}

void attpropfrm::insertSymbols(const QString &text)
{
    if (selectionStart_ >= 0)
        lastField_->setSelection(selectionStart_, selectionLength_);
    selectionStart_ = -1;
    lastField_->insert(text);
}

// A field that loses the focus loses its selection too, unless to another window.
void attpropfrm::rememberSelection()
{
    selectionStart_ = touched_ ? lastField_->selectionStart() : -1;
    selectionLength_ = lastField_->selectionLength();
}

bool attpropfrm::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        lastField_ = watched == txtname ? txtname : txtvalue;
        selectionStart_ = -1;
        touched_ = touched_ && isAnotherWindows(*static_cast<QFocusEvent *>(event));
        break;
    case QEvent::FocusOut:
        if (!isAnotherWindows(*static_cast<QFocusEvent *>(event)))
            rememberSelection();
        break;
    case QEvent::KeyPress:
        touched_ = touched_ || !isForFocus(static_cast<QKeyEvent *>(event)->key());
        break;
    case QEvent::MouseButtonPress:
        touched_ = true;
        break;
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tree
