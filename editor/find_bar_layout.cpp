// How the find bar is made and looks.
#include "editor/find_bar.h"

#include "platform/dialogs/theme_icon.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace editor {

namespace {

QComboBox *makeField(QWidget *parent, const QString &name)
{
    auto *field = new QComboBox(parent);
    field->setObjectName(name);
    field->setEditable(true);
    field->setInsertPolicy(QComboBox::NoInsert);
    field->setCompleter(nullptr);
    field->lineEdit()->setLayoutDirection(Qt::LeftToRight); // as the code it is searched in
    field->view()->setLayoutDirection(Qt::LeftToRight);
    field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    field->setMinimumContentsLength(12);
    field->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return field;
}

QToolButton *makeTool(QWidget *parent, const QString &name, const QString &tip, const QString &accessible)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAccessibleName(accessible);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QPushButton *makeButton(QWidget *parent, const QString &name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

QCheckBox *makeOption(QWidget *parent, const QString &name, const QString &caption, const QString &tip)
{
    auto *box = new QCheckBox(caption, parent);
    box->setObjectName(name);
    box->setToolTip(tip);
    // By its letter or the mouse it is switched while the field keeps the focus.
    box->setFocusPolicy(Qt::TabFocus);
    return box;
}

QLabel *makeLabel(QWidget *parent, const QString &name, const QString &caption, QWidget *buddy)
{
    auto *label = new QLabel(caption, parent);
    label->setObjectName(name);
    label->setBuddy(buddy);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

// The letters of the mnemonics leave those of the menu bar alone.
void FindBar::makeControls()
{
    cboFind = makeField(this, QStringLiteral("cboFind"));
    lblFind = makeLabel(this, QStringLiteral("lblFind"), QStringLiteral("Fin&d:"), cboFind);
    cmdPrevious = makeTool(this, QStringLiteral("cmdPrevious"),
                           QStringLiteral("Previous match (Shift+Enter)"), QStringLiteral("Previous match"));
    cmdNext = makeTool(this, QStringLiteral("cmdNext"), QStringLiteral("Next match (Enter)"),
                       QStringLiteral("Next match"));
    lblCount = makeLabel(this, QStringLiteral("lblCount"), {}, nullptr);
    cmdClose
        = makeTool(this, QStringLiteral("cmdClose"), QStringLiteral("Close (Esc)"), QStringLiteral("Close"));
    cboReplace = makeField(this, QStringLiteral("cboReplace"));
    lblReplace = makeLabel(this, QStringLiteral("lblReplace"), QStringLiteral("Re&place with:"), cboReplace);
    cmdReplace = makeButton(this, QStringLiteral("cmdReplace"), QStringLiteral("&Replace"),
                            QStringLiteral("Replace the match and go to the next (Enter)"));
    cmdReplaceAll = makeButton(this, QStringLiteral("cmdReplaceAll"), QStringLiteral("Replace &All"),
                               QStringLiteral("Replace all matches as one step"));
    chkMatchCase = makeOption(this, QStringLiteral("chkMatchCase"), QStringLiteral("&Match case"),
                              QStringLiteral("Upper and lower case differ"));
    chkWholeWord = makeOption(this, QStringLiteral("chkWholeWord"), QStringLiteral("Whole &word"),
                              QStringLiteral("Not within a longer word"));
    chkExpression = makeOption(
        this, QStringLiteral("chkExpression"), QStringLiteral("Regular e&xpression"),
        QStringLiteral("^ and $ are the ends of a line; $1, ${name}, \\n and \\t can stand in the "
                       "replacement"));
    chkInSelection = makeOption(this, QStringLiteral("chkInSelection"), QStringLiteral("In se&lection"),
                                QStringLiteral("Only in the text that is selected now"));
    lblNotice = makeLabel(this, QStringLiteral("lblNotice"), {}, nullptr);
    lblNotice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    cmdCancel = makeButton(this, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"),
                           QStringLiteral("Leave the text as it is (Esc)"));
    cmdCancel->hide();
}

QWidget *FindBar::optionsRow()
{
    auto *row = new QWidget(this);
    auto *options = new QHBoxLayout(row);
    options->setContentsMargins(0, 0, 0, 0);
    for (QCheckBox *box : {chkMatchCase, chkWholeWord, chkExpression, chkInSelection})
        options->addWidget(box);
    options->addSpacing(fontMetrics().averageCharWidth());
    options->addWidget(lblNotice, 1);
    options->addWidget(cmdCancel);
    return row;
}

void FindBar::layOut()
{
    // As wide as it may become, so that nothing moves while matches are counted.
    lblCount->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("8888 of 88888+")));
    auto *find = new QHBoxLayout;
    find->setSpacing(fontMetrics().averageCharWidth() / 2);
    find->addWidget(cmdPrevious);
    find->addWidget(cmdNext);
    find->addWidget(lblCount, 1);
    find->addWidget(cmdClose);
    auto *replace = new QHBoxLayout;
    replace->setSpacing(fontMetrics().averageCharWidth());
    replace->addWidget(cmdReplace);
    replace->addWidget(cmdReplaceAll);
    replace->addStretch(1);

    const int gap = fontMetrics().height() / 3;
    auto *whole = new QGridLayout(this);
    whole->setContentsMargins(gap * 2, gap, gap * 2, gap);
    whole->setVerticalSpacing(gap);
    whole->addWidget(lblFind, 0, 0);
    whole->addWidget(cboFind, 0, 1);
    whole->addLayout(find, 0, 2);
    whole->addWidget(lblReplace, 1, 0);
    whole->addWidget(cboReplace, 1, 1);
    whole->addLayout(replace, 1, 2);
    whole->addWidget(optionsRow(), 2, 1, 1, 2);
    whole->setColumnStretch(1, 1);
    QWidget *before = cboFind;
    for (QWidget *control : std::initializer_list<QWidget *>{
             cboReplace, cmdPrevious, cmdNext, cmdReplace, cmdReplaceAll, chkMatchCase, chkWholeWord,
             chkExpression, chkInSelection, cmdCancel, cmdClose}) {
        setTabOrder(before, control);
        before = control;
    }
}

void FindBar::dress()
{
    cmdPrevious->setIcon(dialogs::themeIcon(QStringLiteral("go-up")));
    cmdNext->setIcon(dialogs::themeIcon(QStringLiteral("go-down")));
    cmdClose->setIcon(dialogs::themeIcon(QStringLiteral("window-close")));
    session_.scope().dress();
}

// A field without a match has a reddish ground on which its text can still be read.
void FindBar::setRefused(bool refused)
{
    QPalette own;
    if (refused) {
        const QColor base = palette().color(QPalette::Base);
        const bool dark = base.lightness() < 128;
        own = palette();
        own.setColor(QPalette::Base, dark ? QColor(0x6B, 0x24, 0x24) : QColor(0xFF, 0xD6, 0xD6));
    }
    cboFind->setPalette(own);
    cboFind->lineEdit()->setPalette(own);
}

void FindBar::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(0, 0, width(), 0);
}

} // namespace editor
