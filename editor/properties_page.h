// One page of the editor's properties dialog: shows a part of the draft and changes it.
#pragma once

#include "editor/editor_draft.h"

#include <QWidget>

namespace editor {

class PropertiesPage : public QWidget
{
    Q_OBJECT

public:
    // The draft outlives the page.
    PropertiesPage(EditorDraft &draft, QWidget *parent) : QWidget(parent), draft_(draft) { }

    // Shows the draft as it is now; other pages may have changed it.
    virtual void showDraft() = 0;

    // Whether there is something to go back to.
    virtual bool hasDefaults() const { return true; }

    // Puts the page's part of the draft back to what it is before anybody chose, and shows it.
    virtual void restoreDefaults() = 0;

    // Whether something was begun here that the draft does not have yet, and to put it there.
    virtual bool hasPending() const { return false; }
    virtual void takePending() { }

Q_SIGNALS:
    // The user changed the draft here.
    void changed();

protected:
    EditorDraft &draft_;
};

} // namespace editor
