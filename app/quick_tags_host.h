// What Quick Tags inserts into: the tree in Normal Mode, the editor in XML Mode.
#pragma once

#include "editor/quick_tag_target.h"

#include <QPointer>
#include <functional>

class QWidget;

namespace control {
class CodeEditor;
}
namespace editor {
class qiktagfrm;
}
namespace tree {
class NodeCommands;
}

namespace app {

class QuickTagsHost : private editor::QuickTagTarget
{
public:
    // All of it outlives this, which outlives the dialog.
    QuickTagsHost(tree::NodeCommands &nodes, control::CodeEditor &editor, std::function<int()> currentTab)
        : nodes_(nodes), editor_(editor), currentTab_(std::move(currentTab))
    { }
    ~QuickTagsHost() override;
    QuickTagsHost(const QuickTagsHost &) = delete;
    QuickTagsHost &operator=(const QuickTagsHost &) = delete;

    void show(QWidget *owner); // or brings the dialog to the front
    void modeChanged();

private:
    int currentTab() const override { return currentTab_(); }
    QString addElement(const QString &name, const QStringList &attributes) override;
    QByteArray selectedText() const override;
    void replaceSelection(const QByteArray &utf8) override;

    tree::NodeCommands &nodes_;
    control::CodeEditor &editor_;
    std::function<int()> currentTab_;
    QPointer<editor::qiktagfrm> dialog_;
};

} // namespace app
