#include "editor/find_bar.h"

#include "editor/find_memory.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QToolButton>

namespace editor {

namespace {

using S = QsciScintillaBase;

constexpr int previousCommand = 174;
constexpr int nextCommand = 176;
constexpr int services[] = {168, 169, previousCommand, nextCommand, 178};
constexpr qsizetype longestSeed = 1000; // bytes of a selection that is searched for

struct Told
{
    Finding finding;
    bool refused;
    const char *sentence;
};

constexpr Told sentences[] = {
    {Finding::Found, false, ""},
    {Finding::ContinuedAtStart, false, "Continued at the start"},
    {Finding::ContinuedAtEnd, false, "Continued at the end"},
    {Finding::Missing, true, "Nothing found"},
    {Finding::MissingToEnd, true, "Nothing more found"},
    {Finding::TooSlow, true, "The search takes too long"},
    {Finding::TooComplex, true, "The expression is too complex for this text"},
    {Finding::Faulty, true, ""},
};

QString sentenceOf(const control::PatternFault &fault)
{
    return QStringLiteral("%1 (at character %2)").arg(fault.message).arg(fault.place + 1);
}

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

} // namespace

FindBar::FindBar(control::CodeEditor &editor, FindMemory &memory, QWidget *parent)
    : QWidget(parent), editor_(editor), memory_(memory), session_(editor, this),
      marks_(editor, session_.scope(), this), count_(editor, session_.scope(), this),
      replaceAll_(editor, this)
{
    setObjectName(QStringLiteral("FindBar"));
    setAccessibleName(QStringLiteral("Find and Replace"));
    makeControls();
    layOut();
    dress();
    connectControls();
    hide();
}

void FindBar::connectControls()
{
    editor_.installEventFilter(this);
    for (QComboBox *field : {cboFind, cboReplace}) {
        field->installEventFilter(this);
        field->lineEdit()->installEventFilter(this);
    }
    connect(cboFind, &QComboBox::editTextChanged, this, &FindBar::patternEdited);
    for (QCheckBox *box : {chkMatchCase, chkWholeWord, chkExpression})
        connect(box, &QCheckBox::toggled, this, &FindBar::patternEdited);
    connect(chkInSelection, &QCheckBox::toggled, this, &FindBar::limitToSelection);
    connect(cmdPrevious, &QToolButton::clicked, this, [this] { editor_.execute(previousCommand); });
    connect(cmdNext, &QToolButton::clicked, this, [this] { editor_.execute(nextCommand); });
    connect(cmdReplace, &QPushButton::clicked, this, &FindBar::replaceOne);
    connect(cmdReplaceAll, &QPushButton::clicked, this, &FindBar::startReplaceAll);
    connect(cmdCancel, &QPushButton::clicked, &replaceAll_, &ReplaceAll::cancel);
    connect(cmdClose, &QToolButton::clicked, this, &FindBar::close);
    connect(&count_, &MatchCount::changed, this, &FindBar::showCount);
    connect(&replaceAll_, &ReplaceAll::finished, this, &FindBar::replaceAllFinished);
    connect(&replaceAll_, &ReplaceAll::progressed, this, [this](int percent) {
        setRunning(true);
        tell(QStringLiteral("Replacing: %1 %").arg(percent));
    });
    connect(&editor_, &control::CodeEditor::textEdited, this, [this] {
        session_.scope().followText();
        showScope();
        count_.restartSoon();
    });
    connect(&editor_, &control::CodeEditor::caretMoved, this, [this] {
        if (!isVisible())
            return;
        if (editor_.hasFocus())
            origin_ = selectionOf(editor_).start;
        showCount();
    });
}

void FindBar::open(bool replacing)
{
    for (QWidget *control :
         std::initializer_list<QWidget *>{lblReplace, cboReplace, cmdReplace, cmdReplaceAll})
        control->setVisible(replacing);
    takeMemory();
    if (!isVisible() || editor_.hasFocus())
        takeSelection();
    show();
    tell(QString());
    applyPattern();
    cboFind->setFocus(Qt::ShortcutFocusReason);
    cboFind->lineEdit()->selectAll();
    editor_.send(S::SCI_SCROLLCARET);
}

void FindBar::takeMemory()
{
    const control::SearchPattern last = memory_.last();
    const QString replacement = cboReplace->currentText();
    const QSignalBlocker blockers[]
        = {QSignalBlocker(cboFind), QSignalBlocker(cboReplace), QSignalBlocker(chkMatchCase),
           QSignalBlocker(chkWholeWord), QSignalBlocker(chkExpression)};
    for (const auto &[field, list, text] : {std::tuple(cboFind, &memory_.texts(), last.text),
                                            std::tuple(cboReplace, &memory_.replacements(), replacement)}) {
        field->clear();
        field->addItems(*list);
        field->setCurrentIndex(-1);
        field->setEditText(text);
    }
    chkMatchCase->setChecked(last.matchCase);
    chkWholeWord->setChecked(last.wholeWord);
    chkExpression->setChecked(last.expression);
}

// The match that was found last is no new text to search for: it may be what an expression found.
void FindBar::takeSelection()
{
    const control::TextMatch selected = selectionOf(editor_);
    origin_ = selected.start;
    if (selected.length() == 0 || session_.isOnMatch())
        return;
    const auto lineOf
        = [this](qsizetype place) { return editor_.send(S::SCI_LINEFROMPOSITION, ulong(place)); };
    if (lineOf(selected.start) != lineOf(selected.end)) {
        session_.scope().limitTo(selected);
        showScope();
    } else if (selected.length() <= longestSeed) {
        const QString text = QString::fromUtf8(editor_.bytes(editor_.selection()));
        const QSignalBlocker blocker(cboFind);
        cboFind->setEditText(chkExpression->isChecked() ? QRegularExpression::escape(text) : text);
    }
}

void FindBar::close()
{
    replaceAll_.cancel();
    remember();
    session_.scope().lift();
    showScope();
    marks_.show(nullptr);
    count_.start(nullptr);
    hide();
    editor_.giveFocus();
}

control::SearchPattern FindBar::asked() const
{
    return {cboFind->currentText(), chkMatchCase->isChecked(), chkWholeWord->isChecked(),
            chkExpression->isChecked()};
}

void FindBar::applyPattern()
{
    memory_.setLast(asked());
    session_.setPattern(asked());
    setRefused(session_.fault().has_value());
    if (session_.fault())
        tell(sentenceOf(*session_.fault()), true);
    searchAgain();
}

void FindBar::searchAgain()
{
    marks_.show(session_.search());
    count_.start(session_.search());
}

// Searches while the user types, from where the caret was.
void FindBar::patternEdited()
{
    tell(QString());
    applyPattern();
    if (session_.fault())
        return;
    const Finding finding = session_.search() == nullptr ? Finding::Found : session_.findFrom(origin_);
    if (session_.search() == nullptr || finding == Finding::Missing) {
        editor_.send(S::SCI_SETEMPTYSELECTION,
                     ulong(std::min<qsizetype>(origin_, editor_.send(S::SCI_GETLENGTH))));
        editor_.send(S::SCI_SCROLLCARET);
    }
    if (finding == Finding::TooSlow)
        tell(QStringLiteral("Press Enter to search on"));
    else
        tell(finding);
    showCount();
}

void FindBar::limitToSelection(bool limited)
{
    tell(QString());
    const control::TextMatch selected = selectionOf(editor_);
    if (!limited) {
        session_.scope().lift();
    } else if (selected.length() > 0 && !session_.isOnMatch()) {
        session_.scope().limitTo(selected);
    } else {
        // The match that is selected is not what anybody would search in.
        tell(QStringLiteral("Select the text to search in first"));
    }
    showScope();
    searchAgain();
}

void FindBar::showScope()
{
    const QSignalBlocker blocker(chkInSelection);
    chkInSelection->setChecked(session_.scope().isLimited());
}

bool FindBar::find(Direction direction)
{
    if (replaceAll_.isRunning())
        return false;
    session_.setPattern(memory_.last());
    if (memory_.last().text.isEmpty()) {
        open(false);
        return false;
    }
    const Finding finding = session_.find(direction);
    if (isFound(finding))
        origin_ = selectionOf(editor_).start;
    remember();
    tell(finding);
    showCount();
    return isFound(finding);
}

void FindBar::remember() { memory_.rememberText(memory_.last().text); }

control::ReplacementText FindBar::replacement() const
{
    return {cboReplace->currentText(), *session_.search(), control::lineEndBytes(editor_.habits().lineEnd)};
}

// Whether there is something to search for, something good to put in its place, and a text that may be
// changed.
bool FindBar::canReplace()
{
    if (session_.search() == nullptr || replaceAll_.isRunning())
        return false;
    const std::optional<control::PatternFault> fault = replacement().fault();
    if (fault)
        tell(sentenceOf(*fault));
    else if (editor_.send(S::SCI_GETREADONLY) != 0)
        tell(QStringLiteral("The text cannot be changed"));
    else
        return true;
    return false;
}

// Without a match at hand the next one is only shown.
void FindBar::replaceOne()
{
    if (!canReplace())
        return;
    memory_.rememberReplacement(cboReplace->currentText());
    session_.replace(replacement());
    find(Direction::Forwards);
}

void FindBar::startReplaceAll()
{
    if (!canReplace())
        return;
    remember();
    memory_.rememberReplacement(cboReplace->currentText());
    tell(QString());
    replaceAll_.start(session_.search(), replacement(), session_.scope().range());
}

void FindBar::replaceAllFinished(ReplaceAll::Outcome outcome, qsizetype count)
{
    setRunning(false);
    switch (outcome) {
    case ReplaceAll::Outcome::Replaced:
        tell(count == 0       ? QStringLiteral("Nothing found")
                 : count == 1 ? QStringLiteral("1 match replaced")
                              : QStringLiteral("%1 matches replaced").arg(QLocale().toString(count)),
             count == 0);
        break;
    case ReplaceAll::Outcome::Cancelled:
        tell(QStringLiteral("Nothing was replaced"));
        break;
    case ReplaceAll::Outcome::TextChanged:
        tell(QStringLiteral("Nothing was replaced: the text was edited meanwhile"));
        break;
    case ReplaceAll::Outcome::GaveUp:
        tell(Finding::TooComplex);
        break;
    }
}

void FindBar::setRunning(bool running)
{
    if (cmdCancel->isVisibleTo(this) == running)
        return;
    cmdCancel->setVisible(running);
    if (running)
        cmdCancel->setFocus();
    for (QWidget *control : std::initializer_list<QWidget *>{cboFind, cboReplace, cmdPrevious, cmdNext,
                                                             cmdReplace, cmdReplaceAll, chkMatchCase,
                                                             chkWholeWord, chkExpression, chkInSelection})
        control->setEnabled(!running);
    if (!running && isVisible())
        cboReplace->setFocus();
}

void FindBar::tell(Finding finding)
{
    if (finding == Finding::Faulty && session_.fault()) {
        tell(sentenceOf(*session_.fault()), true);
        return;
    }
    for (const Told &row : sentences)
        if (row.finding == finding)
            tell(QString::fromLatin1(row.sentence), row.refused);
}

// Read out by screen readers; said elsewhere when the bar cannot be seen.
void FindBar::tell(const QString &sentence, bool refused)
{
    setRefused(refused);
    lblNotice->setText(sentence);
    lblNotice->setToolTip(sentence);
    if (sentence.isEmpty())
        return;
    QAccessibleEvent alert(lblNotice, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    if (!isVisible())
        Q_EMIT noted(sentence + u'.');
}

void FindBar::showCount() { lblCount->setText(count_.text(selectionOf(editor_))); }

// The editor's own keys for finding work in the fields too.
int FindBar::serviceOf(const QKeyEvent &event) const
{
    const int command = editor_.shortcuts().command(control::typedKeys({}, event));
    return std::find(std::begin(services), std::end(services), command) == std::end(services) ? 0 : command;
}

// Escape in the text leaves what is open there first: the list of names, several carets.
bool FindBar::closesFromText(const QEvent &event) const
{
    using S = QsciScintillaBase;
    return event.type() == QEvent::KeyPress && isVisible()
        && static_cast<const QKeyEvent &>(event).keyCombination() == QKeyCombination(Qt::Key_Escape)
        && editor_.send(S::SCI_AUTOCACTIVE) == 0 && editor_.send(S::SCI_GETSELECTIONS) == 1
        && editor_.repeatCount() == 1;
}

bool FindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &editor_) {
        if (!closesFromText(*event))
            return false;
        if (replaceAll_.isRunning())
            replaceAll_.cancel();
        else
            close();
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && serviceOf(*static_cast<QKeyEvent *>(event)) != 0) {
        event->accept();
        return true;
    }
    const bool inReplacement = watched == cboReplace || watched == cboReplace->lineEdit();
    if (event->type() == QEvent::KeyPress && keyInField(*static_cast<QKeyEvent *>(event), inReplacement))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool FindBar::keyInField(const QKeyEvent &event, bool inReplacement)
{
    const bool backwards = event.modifiers().testFlag(Qt::ShiftModifier);
    if (const int command = serviceOf(event); command != 0)
        editor_.execute(command);
    else if (!isEnter(event.key()))
        return false;
    else if (inReplacement && !backwards)
        replaceOne();
    else
        editor_.execute(backwards ? previousCommand : nextCommand);
    return true;
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(focusWidget());
    if (event->key() == Qt::Key_Escape && replaceAll_.isRunning())
        replaceAll_.cancel();
    else if (event->key() == Qt::Key_Escape)
        close();
    else if (isEnter(event->key()) && button != nullptr && !button->isCheckable())
        button->click();
    else if (!keyInField(*event, false))
        QWidget::keyPressEvent(event);
}

void FindBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && cmdClose != nullptr)
        dress();
}

} // namespace editor
