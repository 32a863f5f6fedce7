#include "platform/control/editor_accessible.h"

#include "platform/control/code_editor.h"

#include <QAccessibleWidget>

namespace control {

namespace {

// Stands for the editor while nobody listens: a name and a role, but no text to keep track of. Otherwise the
// choice is left to the engine's own factory.
QAccessibleInterface *quietAccessible(const QString &, QObject *object)
{
    auto *editor = qobject_cast<CodeEditor *>(object);
    if (editor == nullptr || QAccessible::isActive())
        return nullptr;
    return new QAccessibleWidget(editor, QAccessible::EditableText);
}

} // namespace

AccessibleText::AccessibleText(QWidget &editor, std::function<void()> changed)
    : editor_(editor), changed_(std::move(changed))
{
    QAccessible::installFactory(quietAccessible);
    QAccessible::installActivationObserver(this);
}

AccessibleText::~AccessibleText() { QAccessible::removeActivationObserver(this); }

void AccessibleText::accessibilityActiveChanged(bool)
{
    if (QAccessibleInterface *known = QAccessible::queryAccessibleInterface(&editor_))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
    changed_();
}

} // namespace control
