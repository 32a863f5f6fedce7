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
    QString refused;
    const QMetaObject::Connection heard = QObject::connect(
        &nodes_, &tree::NodeCommands::noted, [&refused](const QString &reason) { refused = reason; });
    nodes_.insertElement(name, attributes);
    QObject::disconnect(heard);
    return refused;
}

QByteArray QuickTagsHost::selectedText() const { return editor_.selectedText(); }

void QuickTagsHost::replaceSelection(const QByteArray &utf8) { editor_.replaceSelection(utf8); }

} // namespace app
