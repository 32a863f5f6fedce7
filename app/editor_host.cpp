#include "app/editor_host.h"

#include "app/command_set.h"
#include "app/commands.h"
#include "app/status_bar.h"
#include "app/view_frame.h"
#include "editor/count_all.h"
#include "editor/editor_settings.h"
#include "editor/frmprview.h"
#include "platform/control/code_editor.h"

#include <QVBoxLayout>
#include <algorithm>

namespace app {

namespace {

constexpr char recordName[] = "createmac";

}

EditorHost::EditorHost(const Around &around)
    : around_(around), memory_(&around_.settings), services_(around_.editor, memory_, around_.note),
      macros_(around_.dataFolder, around_.editor.library()->macros, around_.note)
{
    around_.frame.addBelow(document::XmlMode, services_.findBar());
    connect(&services_, &editor::EditorServices::activityChanged, this, &EditorHost::showActivity);
    connect(&around_.editor, &control::CodeEditor::propertiesChanged, this, &EditorHost::saveSettings);
}

EditorHost::~EditorHost() { closeAssignedPreview(); }

void EditorHost::load()
{
    editor::LoadEditorSettings(around_.editor, around_.settings);
    macros_.LoadMacros();
    showKeys();
}

void EditorHost::saveSettings()
{
    if (const auto kept = editor::SaveEditorSettings(around_.editor, around_.settings); !kept)
        around_.note(kept.reason());
    showKeys();
}

void EditorHost::rememberView()
{
    if (const auto kept = editor::SaveEditorView(around_.editor, around_.settings); !kept)
        around_.note(kept.reason());
}

void EditorHost::showKeys()
{
    keys_ = around_.editor.shortcuts();
    around_.commands.showEditorKeys(
        [this](int command) { return around_.editor.shortcuts().shortcuts(command).value(0); });
}

// The command that began a recording ends it.
void EditorHost::showActivity(const QString &text)
{
    around_.bar.setActivity(text);
    around_.bar.setRecording(services_.recording());
    const auto row = std::find_if(commandTable().begin(), commandTable().end(), [](const Command &command) {
        return QLatin1StringView(command.name) == QLatin1StringView(recordName);
    });
    around_.commands.action(*row)->setText(services_.recording() ? tr("Stop Recording")
                                                                 : QString::fromLatin1(row->caption));
}

// Who said No and stays after all for the document's sake has lost nothing, and is asked again.
bool EditorHost::mayLeave()
{
    if (!macros_.hasUnsaved())
        return true;
    const dialogs::Answer answer
        = around_.dialogs.message(dialogs::Icon::Question, dialogs::Buttons::YesNoCancel,
                                  tr("Macros were recorded and not saved. Save them?"));
    if (answer == dialogs::Answer::Yes)
        macros_.SaveMacros();
    return answer == dialogs::Answer::No || (answer == dialogs::Answer::Yes && !macros_.hasUnsaved());
}

void EditorHost::saveMacros() { macros_.SaveMacros(); }

void EditorHost::countAll()
{
    const editor::TextCounts counts = editor::countAll(around_.editor);
    around_.note(editor::countLine(counts));
    around_.dialogs.message(dialogs::Icon::Information, dialogs::Buttons::Ok, editor::countMessage(counts),
                            editor::countTitle());
}

void EditorHost::toggleAssignedPreview()
{
    if (assigned_ == nullptr)
        openAssignedPreview();
    else
        closeAssignedPreview();
}

void EditorHost::openAssignedPreview()
{
    assigned_ = new editor::frmprview(
        editor::AssignedSource{
            .dialogs = around_.dialogs,
            .previews = around_.previews,
            .library = around_.editor.library(),
            .PreviewFilePath = around_.session.state().PreviewFilePath,
            .previewCopyPath = [this] { return around_.session.state().previewCopyPath(); },
            .currentText = [this] { return around_.session.saving().currentText(); },
            .writePreviewCopy
            = [this](const QByteArray &text) { return around_.session.files().writePreviewCopy(text); },
            .dress
            = [this](control::CodeEditor &editor) { editor::LoadEditorSettings(editor, around_.settings); },
            .note = around_.note,
            .closed =
                [this] {
                    assignedServices_.reset();
                    showAssigned(false);
                },
        },
        &around_.window);
    assignedServices_ = std::make_unique<editor::EditorServices>(assigned_->editor(), memory_, around_.note);
    // What is chosen there is shown there; keys are the same for both editors, and kept with this one.
    connect(&assigned_->editor(), &control::CodeEditor::propertiesChanged, this, [this] {
        if (around_.editor.shortcuts() != keys_)
            around_.editor.noticeShortcutChange();
    });
    assigned_->editorLayout().addWidget(assignedServices_->findBar());
    assigned_->show();
    showAssigned(true);
}

void EditorHost::closeAssignedPreview()
{
    if (assigned_ != nullptr)
        assigned_->close();
    assigned_ = nullptr;
}

void EditorHost::showAssigned(bool open)
{
    around_.commands.action(QStringLiteral("mnuAssignedfilePre"))->setChecked(open);
}

} // namespace app
