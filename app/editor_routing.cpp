#include "app/editor_routing.h"

#include "app/command_set.h"
#include "app/commands.h"
#include "platform/control/editor_commands.h"

namespace app {

namespace {

// Commands of which the editor can say whether it could perform them.
struct Direct
{
    const char *name;
    bool (control::EditorControl::*can)() const;
    int command;
};

constexpr Direct direct[] = {
    {"editcmxsub_0", &control::EditorControl::canUndo, 100},
    {"editcmxsub_1", &control::EditorControl::canRedo, 101},
    {"editcmxsub_3", &control::EditorControl::canCut, 102},
    {"editcmxsub_4", &control::EditorControl::canCopy, 103},
    {"editcmxsub_5", &control::EditorControl::canPaste, 104},
};

} // namespace

EditorRouting::EditorRouting(control::EditorControl &editor, CommandSet &commands,
                             std::function<void(const QString &)> note)
    : editor_(editor), commands_(commands), note_(std::move(note))
{
    bindNumbered();
    bindDirect();
    bindLineHistory();
    commands_.bind("editcmxsub_11", [this] { toggleWhiteSpace(); });
}

void EditorRouting::bindNumbered()
{
    for (const Command &row : commandTable()) {
        if (control::findEditorCommand(row.editorCommand) != nullptr)
            commands_.bind(row.name, [this, &row] { execute(row); });
    }
}

void EditorRouting::bindDirect()
{
    for (const Direct &row : direct) {
        commands_.bind(row.name, [this, row] {
            if ((editor_.*row.can)())
                editor_.execute(row.command);
            refresh();
        });
    }
}

void EditorRouting::bindLineHistory()
{
    commands_.bind("searchcmxsub_12", [this] { NextLine(); });
    commands_.bind("searchcmxsub_13", [this] { PrevLine(); });
}

void EditorRouting::execute(const Command &row)
{
    // Who serves a command says himself what came of it.
    const bool served = control::findEditorCommand(row.editorCommand)->isService();
    if (!editor_.execute(row.editorCommand) && !served)
        note_(QStringLiteral("%1: there is nothing to do.")
                  .arg(QString::fromLatin1(row.caption).remove(QLatin1Char('&')).trimmed()));
}

void EditorRouting::toggleWhiteSpace()
{
    editor_.setWhiteSpaceShown(!editor_.whiteSpaceShown());
    commands_.action(QStringLiteral("editcmxsub_11"))->setChecked(editor_.whiteSpaceShown());
}

void EditorRouting::refresh()
{
    for (const Direct &row : direct)
        commands_.action(QString::fromLatin1(row.name))->setEnabled((editor_.*row.can)());
    commands_.action(QStringLiteral("editcmxsub_11"))->setChecked(editor_.whiteSpaceShown());
}

void EditorRouting::textEdited()
{
    if (editor_.highlightedLine() >= 0)
        editor_.setHighlightedLine(-1);
}

editor::CaretPosition EditorRouting::caret() const { return {editor_.caretLine(), editor_.caretColumn()}; }

void EditorRouting::enter()
{
    arrival_.reset();
    history_.restart(caret());
    refreshLineHistory();
    refresh();
}

void EditorRouting::caretMoved()
{
    if (std::exchange(arrival_, std::nullopt) != caret())
        history_.record(caret());
    refreshLineHistory();
    refresh();
}

void EditorRouting::NextLine()
{
    if (history_.hasLater())
        goTo(history_.stepForward());
}

void EditorRouting::PrevLine()
{
    if (history_.hasEarlier())
        goTo(history_.stepBack());
}

// The arrival is reported like any other move. It may lie elsewhere than asked for, where the text has become
// shorter, and must not be taken for a new place: the user could never step back past it.
void EditorRouting::goTo(editor::CaretPosition position)
{
    editor_.placeCaret(position.line, position.column);
    arrival_ = caret();
    editor_.giveFocus();
    refreshLineHistory();
}

void EditorRouting::refreshLineHistory()
{
    commands_.action(QStringLiteral("searchcmxsub_12"))->setEnabled(history_.hasLater());
    commands_.action(QStringLiteral("searchcmxsub_13"))->setEnabled(history_.hasEarlier());
}

} // namespace app
