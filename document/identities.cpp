#include "document/identities.h"

namespace document {

void Identities::savedFrom(DomIdentity dom)
{
    savedDom_ = dom;
    savedEditor_.reset();
    share();
}

void Identities::savedFrom(EditorIdentity editor)
{
    savedEditor_ = editor;
    savedDom_.reset();
    share();
}

void Identities::forgetSaved()
{
    savedDom_.reset();
    savedEditor_.reset();
}

void Identities::agree(DomIdentity dom, EditorIdentity editor)
{
    agreedDom_ = dom;
    agreedEditor_ = editor;
    share();
}

bool Identities::agreed(DomIdentity dom, EditorIdentity editor) const
{
    return agreedDom_ == dom && agreedEditor_ == editor;
}

// What equals one of two equal texts equals the other.
void Identities::share()
{
    if (!agreedDom_)
        return;
    if (savedDom_ == agreedDom_)
        savedEditor_ = agreedEditor_;
    else if (savedEditor_ == agreedEditor_)
        savedDom_ = agreedDom_;
}

} // namespace document
