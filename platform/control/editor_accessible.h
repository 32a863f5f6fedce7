// What assistive technology sees of the editor. The engine's own view of the text counts all characters
// before the caret at every move, so it is made only when somebody listens.
#pragma once

#include <QAccessible>
#include <functional>

class QWidget;

namespace control {

class AccessibleText : private QAccessible::ActivationObserver
{
public:
    // For the lifetime of the editor; changed is called when listening begins or ends.
    AccessibleText(QWidget &editor, std::function<void()> changed);
    ~AccessibleText() override;
    Q_DISABLE_COPY_MOVE(AccessibleText)

private:
    void accessibilityActiveChanged(bool active) override;

    QWidget &editor_;
    std::function<void()> changed_;
};

} // namespace control
