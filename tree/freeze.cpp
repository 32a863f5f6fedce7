#include "tree/freeze.h"

namespace tree {

void Freeze::setForm(QWidget *pForm)
{
    release();
    if (!pForm || !pForm->updatesEnabled())
        return;
    form_ = pForm;
    pForm->setUpdatesEnabled(false);
}

void Freeze::release()
{
    if (form_)
        form_->setUpdatesEnabled(true);
    form_.clear();
}

} // namespace tree
