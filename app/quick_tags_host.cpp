#include "app/quick_tags_host.h"

#include "editor/qiktagfrm.h"
#include "platform/control/code_editor.h"
#include "tree/node_commands.h"

namespace app {

QuickTagsHost::~QuickTagsHost() { delete dialog_; }

void QuickTagsHost::show(QWidget *owner)
{
    if (!dialog_)
        dialog_ = new editor::qiktagfrm(*this, owner);
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

void QuickTagsHost::modeChanged()
{
    if (dialog_)
        dialog_->modeChanged();
}

QString QuickTagsHost::addElement(const QString &name, const QStringList &attributes)
{
    const platform::Result<void> inserted = nodes_.insertElement(name, attributes);
    return inserted ? QString() : inserted.reason();
}

QByteArray QuickTagsHost::selectedText() const { return editor_.selectedText(); }

void QuickTagsHost::replaceSelection(const QByteArray &utf8) { editor_.replaceSelection(utf8); }

} // namespace app
