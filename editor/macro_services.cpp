#include "editor/macro_services.h"

#include "editor/macro_slot_dialog.h"
#include "editor/macro_words.h"
#include "editor/repeat_count_dialog.h"
#include "platform/control/code_editor.h"

#include <QLocale>

namespace editor {

namespace {

constexpr int repeatCommand = 187;
constexpr int recordCommand = 213;
constexpr int firstPlayCommand = 214;

} // namespace

MacroServices::MacroServices(control::CodeEditor &editor, QWidget *dialogParent, const Note &note)
    : editor_(editor), dialogParent_(dialogParent), note_(note), recorder_(editor), progress_(dialogParent)
{
    editor_.setServiceHandler(repeatCommand, [this] { return askRepeatCount(); });
    editor_.setServiceHandler(recordCommand, [this] { return record(); });
    for (int slot = 0; slot < control::MacroSlots::count; ++slot)
        editor_.setServiceHandler(firstPlayCommand + slot, [this, slot] { return play(slot); });
    editor_.player().watch([this](const control::PlayReport &report) { return goOn(report); },
                           [this](const control::PlayReport &report) { playEnded(report); });
    connect(&editor_, &control::CodeEditor::stepped, this, &MacroServices::stepped);
    connect(&editor_, &control::CodeEditor::repeatCountChanged, this, &MacroServices::tellState);
}

MacroServices::~MacroServices()
{
    editor_.player().watch({}, {});
    editor_.setServiceHandler(repeatCommand, {});
    for (int slot = -1; slot < control::MacroSlots::count; ++slot)
        editor_.setServiceHandler(firstPlayCommand + slot, {});
}

QString MacroServices::stateText() const
{
    QStringList states;
    if (recording())
        states += recordingText();
    if (editor_.repeatCount() > 1)
        states += QStringLiteral("Repeat: %1").arg(QLocale().toString(editor_.repeatCount()));
    return states.join(QStringLiteral("; "));
}

// Says how it ends, too: who began it by mistake has no other way to know.
QString MacroServices::recordingText() const
{
    const QKeySequence keys = editor_.shortcuts().shortcuts(recordCommand).value(0);
    const QString told = QStringLiteral("Recording a macro: %1").arg(countedSteps(recorder_.strokes()));
    return keys.isEmpty()
        ? told
        : QStringLiteral("%1 (%2 stops)").arg(told, keys.toString(QKeySequence::NativeText));
}

bool MacroServices::record()
{
    if (recording()) {
        const bool kept = keep(recorder_.finish());
        tellState();
        return kept;
    }
    recorder_.start();
    note_({});
    tellState();
    return true;
}

// A macro that is played by what it plays would go on for ever; the dialog does not offer such a slot.
bool MacroServices::keep(const control::Macro &recorded)
{
    if (recorded.isEmpty()) {
        note_(QStringLiteral("Nothing was recorded."));
        return false;
    }
    const QByteArray bytes = control::bytesOf(recorded);
    if (bytes.isEmpty()) {
        note_(QStringLiteral("What was recorded is too large for a macro."));
        return false;
    }
    control::EditorLibrary &library = *editor_.library();
    MacroSlotDialog dialog(library, recorded, lastUsed_, dialogParent_);
    if (dialog.exec() != QDialog::Accepted || dialog.slot() < 0) {
        note_(QStringLiteral("The recording was discarded."));
        return false;
    }
    lastUsed_ = dialog.slot();
    library.macros.setMacro(lastUsed_, bytes);
    const QString keys = keysText(library, lastUsed_);
    note_(keys.isEmpty() ? QStringLiteral("Recorded as %1.").arg(macroName(lastUsed_))
                         : QStringLiteral("Recorded as %1. %2 plays it.").arg(macroName(lastUsed_), keys));
    return true;
}

bool MacroServices::askRepeatCount()
{
    RepeatCountDialog dialog(lastCount_, dialogParent_);
    const bool chosen = dialog.exec() == QDialog::Accepted;
    if (chosen)
        lastCount_ = dialog.count();
    editor_.setRepeatCount(chosen ? dialog.count() : 1);
    return chosen;
}

bool MacroServices::play(int slot)
{
    const control::Macro *macro = readied(slot);
    return macro != nullptr && editor_.player().play(*macro);
}

// A macro is read and looked through once in each play, however often it is repeated.
const control::Macro *MacroServices::readied(int slot)
{
    if (const auto found = readied_.constFind(slot); found != readied_.cend())
        return &*found;
    const control::MacroSlots &macros = editor_.library()->macros;
    const std::optional<control::Macro> macro = control::macroOf(macros.macro(slot));
    if (!macro) {
        refuse(QStringLiteral("%1 is empty.").arg(macroName(slot)));
        return nullptr;
    }
    if (control::plays(macros, *macro, slot)) {
        refuse(QStringLiteral("%1 would play itself.").arg(macroName(slot)));
        return nullptr;
    }
    if (readied_.isEmpty())
        playing_ = macroName(slot);
    return &*readied_.insert(slot, *macro);
}

// Within a play the end of it says why.
void MacroServices::refuse(const QString &why)
{
    if (editor_.player().playing())
        refusal_ = why;
    else
        note_(why);
}

bool MacroServices::goOn(const control::PlayReport &report)
{
    return progress_.goOn(playing_.isEmpty() ? QStringLiteral("Repeating") : playing_, report);
}

void MacroServices::playEnded(const control::PlayReport &report)
{
    progress_.end();
    const bool refused = report.end == control::PlayEnd::StepFailed && !refusal_.isEmpty();
    const QString text = refused ? refusal_ : endText(report);
    readied_.clear();
    playing_.clear();
    refusal_.clear();
    if (!text.isEmpty())
        note_(text);
}

void MacroServices::stepped(const control::Step &step)
{
    if (!recording())
        return;
    if (const platform::Result<void> taken = recorder_.take(step); !taken)
        note_(taken.reason());
    tellState();
}

void MacroServices::tellState() { Q_EMIT stateChanged(stateText()); }

} // namespace editor
