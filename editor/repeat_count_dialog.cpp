#include "editor/repeat_count_dialog.h"

#include "platform/control/macro.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace editor {

RepeatCountDialog::RepeatCountDialog(int proposed, QWidget *parent)
    : QDialog(parent), txtCount(new QSpinBox(this))
{
    setObjectName(QStringLiteral("frmRepeatCount"));
    setWindowTitle(QStringLiteral("Repeat Count"));
    txtCount->setObjectName(QStringLiteral("txtCount"));
    txtCount->setRange(1, control::mostRepeats);
    txtCount->setGroupSeparatorShown(true);
    txtCount->setValue(proposed);
    txtCount->selectAll();

    auto *label = new QLabel(QStringLiteral("&Repeat the next command or letter:"), this);
    label->setBuddy(txtCount);
    auto *times = new QLabel(QStringLiteral("times"), this);
    auto *count = new QHBoxLayout;
    count->addWidget(label);
    count->addWidget(txtCount, 1);
    count->addWidget(times);

    auto *hint = new QLabel(QStringLiteral("Esc takes a count back that is still waiting."), this);
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("OKButton"));
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CancelButton"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *whole = new QVBoxLayout(this);
    whole->addLayout(count);
    whole->addWidget(hint);
    whole->addStretch();
    whole->addWidget(buttons);
    txtCount->setFocus();
}

int RepeatCountDialog::count() const { return txtCount->value(); }

} // namespace editor
