// What the code editor makes of keys, mouse and dragged things.
#include "platform/control/code_editor.h"

#include "platform/control/editor_commands.h"
#include "platform/control/editor_look.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QWheelEvent>
#include <algorithm>

namespace control {

namespace {

constexpr int newLineCommand = 121;

// The desktop's own keys work whatever key their command has, unless they were given to another one. So do
// keys that everybody has in the fingers: of a command's keys only the first is kept between runs.
constexpr std::pair<QKeySequence::StandardKey, int> desktopKeys[] = {
    {QKeySequence::Undo, 100}, {QKeySequence::Redo, 101},  {QKeySequence::Cut, 102},
    {QKeySequence::Copy, 103}, {QKeySequence::Paste, 104}, {QKeySequence::SelectAll, 137},
};
constexpr std::pair<QKeyCombination, int> usualKeys[] = {
    {Qt::ALT | Qt::Key_Backspace, 100},
    {Qt::SHIFT | Qt::Key_Backspace, 105},
    {Qt::CTRL | Qt::Key_Equal, 150},
};

int usualCommand(const QKeyEvent &event)
{
    for (const auto &[key, command] : desktopKeys)
        if (event.matches(key))
            return command;
    for (const auto &[keys, command] : usualKeys)
        if (typedKeys({}, event)[0] == keys)
            return command;
    return 0;
}

// Some keyboards, and those that only pretend to be one, have a key for the line feed besides Return.
bool bringsLineEnd(const QKeyEvent &event)
{
    return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0
        && (event.text() == QStringLiteral("\n") || event.text() == QStringLiteral("\r"));
}

bool isModifierKey(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta
        || key == Qt::Key_AltGr || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

// Ctrl or Alt alone with a letter is a command. Both together are how some keyboards reach a third sign of a
// key.
bool typesText(const QKeyEvent &event)
{
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    if (control != event.modifiers().testFlag(Qt::AltModifier)
        || event.modifiers().testFlag(Qt::MetaModifier))
        return false;
    return !event.text().isEmpty() && (event.text().front().isPrint() || event.text().front().isSurrogate());
}

// Files are opened by the window; their names are not typed into the text.
bool bringsFiles(const QDropEvent &event)
{
    const QList<QUrl> urls = event.mimeData()->urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); });
}

} // namespace

// Keys of the editor come before shortcuts of the window, and so does plain typing.
bool CodeEditor::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (claims(*key) || typesText(*key)) {
            event->accept();
            return true;
        }
    }
    const bool handled = QsciScintillaBase::event(event);
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::InputMethod)
        settle();
    return handled;
}

// What is drawn on a widget at once has the desktop's direction, whatever the widget's own is; a picture of
// it has the direction of its text.
void CodeEditor::aboutToPaint()
{
    const bool apart = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    if ((send(SCI_GETBUFFEREDDRAW) != 0) != apart)
        send(SCI_SETBUFFEREDDRAW, apart ? 1 : 0);
    xmlStyling_.aboutToPaint();
}

bool CodeEditor::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Paint)
        aboutToPaint();
    const bool handled = QsciScintillaBase::viewportEvent(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Drop:
        settle();
        break;
    default:
        break;
    }
    return handled;
}

void CodeEditor::changeEvent(QEvent *event)
{
    QsciScintillaBase::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        dress();
}

// A command that is carried out elsewhere is only claimed when somebody does so.
bool CodeEditor::claims(const QKeyEvent &event) const
{
    const QKeySequence typed = typedKeys(firstStroke_, event);
    if (library_->shortcuts.beginsShortcut(typed) || clearsRepeatCount(event))
        return true;
    const int chosen = library_->shortcuts.command(typed);
    const EditorCommand *command
        = findEditorCommand(chosen == 0 && typed.count() == 1 ? usualCommand(event) : chosen);
    return command != nullptr && (!command->isService() || services_.contains(command->number));
}

void CodeEditor::keyPressEvent(QKeyEvent *event)
{
    if (isModifierKey(event->key())) {
        QsciScintillaBase::keyPressEvent(event);
        return;
    }
    const QKeySequence typed = typedKeys(std::exchange(firstStroke_, {}), *event);
    if (clearsRepeatCount(*event)) {
        setRepeatCount(1);
        event->accept();
        return;
    }
    if (library_->shortcuts.beginsShortcut(typed)) {
        firstStroke_ = typed;
        event->accept();
    } else if (const int command = library_->shortcuts.command(typed); command != 0) {
        event->setAccepted(execute(command));
    } else if (const int usual = typed.count() == 1 ? usualCommand(*event) : 0; usual != 0) {
        event->setAccepted(execute(usual));
    } else if (typed.count() > 1) {
        // A second stroke that completes nothing types nothing either.
        event->accept();
    } else if (bringsLineEnd(*event)) {
        execute(newLineCommand);
    } else if (!typesText(*event)) {
        event->ignore();
    } else {
        perform({0, event->text().toUtf8()});
        event->accept();
    }
}

// A click among the signs of the folds finds the lines it is about to fold.
void CodeEditor::readyFolds(const QMouseEvent &event)
{
    const double left
        = double(send(SCI_GETMARGINWIDTHN, bookmarkMargin) + send(SCI_GETMARGINWIDTHN, numberMargin));
    const double x = event.position().x();
    if (!xmlStyling_.isOn() || x < left || x >= left + double(send(SCI_GETMARGINWIDTHN, foldMargin)))
        return;
    const long position = send(SCI_POSITIONFROMPOINT, ulong(x), long(event.position().y()));
    const long line = send(SCI_LINEFROMPOSITION, ulong(position));
    if (event.modifiers().testFlags(Qt::ControlModifier | Qt::ShiftModifier))
        xmlStyling_.knowAll();
    else if (xmlStyling_.beginsBlock(line))
        xmlStyling_.knowBlock(line);
}

// The right button keeps a selection it falls into, so that the menu can act on it.
void CodeEditor::mousePressEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    const long position = send(SCI_POSITIONFROMPOINT, ulong(point.x()), point.y());
    const ByteRange selected = selection();
    const bool hit = selected.length() != 0 && position >= selected.start && position <= selected.end;
    if (event->button() != Qt::RightButton) {
        readyFolds(*event);
        // Where a selection is not to be dragged, the engine must not find one under the mouse.
        if (hit && !properties_.dragText && event->modifiers() == Qt::NoModifier)
            send(SCI_SETEMPTYSELECTION, ulong(position));
        QsciScintillaBase::mousePressEvent(event);
        return;
    }
    setFocus(Qt::MouseFocusReason);
    if (!hit)
        send(SCI_SETEMPTYSELECTION, ulong(position));
}

void CodeEditor::wheelEvent(QWheelEvent *event)
{
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
        QsciScintillaBase::wheelEvent(event);
        return;
    }
    if (event->angleDelta().y() != 0)
        send(event->angleDelta().y() > 0 ? SCI_ZOOMIN : SCI_ZOOMOUT);
    event->accept();
}

void CodeEditor::contextMenuEvent(QContextMenuEvent *event)
{
    QPoint where = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        send(SCI_SCROLLCARET);
        const ulong caret = ulong(send(SCI_GETCURRENTPOS));
        const long below = send(SCI_TEXTHEIGHT, ulong(caretLine()));
        where = viewport()->mapToGlobal(QPoint(int(send(SCI_POINTXFROMPOSITION, 0, long(caret))),
                                               int(send(SCI_POINTYFROMPOSITION, 0, long(caret)) + below)));
    }
    event->accept();
    Q_EMIT contextMenuRequested(where);
}

void CodeEditor::dragEnterEvent(QDragEnterEvent *event)
{
    if (bringsFiles(*event))
        event->ignore();
    else
        QsciScintillaBase::dragEnterEvent(event);
}

void CodeEditor::dragMoveEvent(QDragMoveEvent *event)
{
    if (bringsFiles(*event))
        event->ignore();
    else
        QsciScintillaBase::dragMoveEvent(event);
}

void CodeEditor::dropEvent(QDropEvent *event)
{
    if (bringsFiles(*event))
        event->ignore();
    else
        QsciScintillaBase::dropEvent(event);
}

} // namespace control
