#include "editor/editor_services.h"

#include "editor/find_bar.h"
#include "editor/find_services.h"
#include "editor/properties_dialog.h"
#include "platform/control/code_editor.h"

namespace editor {

namespace {

constexpr int propertiesCommand = 224;

}

EditorServices::EditorServices(control::CodeEditor &editor, FindMemory &memory, const Note &note,
                               QObject *parent)
    : QObject(parent), editor_(editor), findBar_(new FindBar(editor, memory, editor.parentWidget())),
      macros_(editor, editor.parentWidget(), note)
{
    bindFindServices(editor_, *findBar_);
    connect(findBar_, &FindBar::noted, this, note);
    connect(&macros_, &MacroServices::stateChanged, this, &EditorServices::activityChanged);
    editor_.setServiceHandler(propertiesCommand, [this] { return showProperties(); });
}

EditorServices::~EditorServices() = default;

QWidget *EditorServices::findBar() const { return findBar_; }

bool EditorServices::showProperties()
{
    if (properties_ == nullptr)
        properties_ = new PropertiesDialog(editor_, editor_.window());
    properties_->exec();
    return true;
}

} // namespace editor
