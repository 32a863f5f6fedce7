// Suspends the repainting of one window while it is rebuilt.
#pragma once

#include <QPointer>
#include <QWidget>

namespace tree {

class Freeze
{
public:
    Freeze() = default;
    ~Freeze() { release(); }
    Freeze(const Freeze &) = delete;
    Freeze &operator=(const Freeze &) = delete;

    // From now until this object goes, pForm is not repainted; another form given earlier is released. A form
    // that is frozen already is left to whoever froze it.
    void setForm(QWidget *pForm);

private:
    void release();

    QPointer<QWidget> form_; // null when there is nothing to resume
};

} // namespace tree
