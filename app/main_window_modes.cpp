// The main window's three modes: which is shown, and what goes along from one to the next.
#include "app/document_mark.h"
#include "app/main_window.h"
#include "app/quick_tags_host.h"
#include "app/tidy_host.h"
#include "app/tree_place.h"
#include "app/view_frame.h"
#include "platform/control/code_editor.h"
#include "tree/freeze.h"
#include "tree/tree_model.h"
#include "tree/tree_view.h"

#include <QScopedValueRollback>
#include <QTabBar>
#include <QTabWidget>

#include <utility>

namespace app {

int mainfrm::currentTab() const { return frame_->tabs()->currentIndex(); }

void mainfrm::selectTab(int tab) { frame_->tabs()->setCurrentIndex(tab); }

// A mode that was chosen as such is for working in, wherever the focus was.
void mainfrm::chooseMode(int tab)
{
    selectTab(tab);
    frame_->view(currentTab())->setFocus();
}

// The handler may lead on to another tab, and is then here again before it returns; the outer switch has
// nothing left to do when it comes back.
void mainfrm::tabChanged(int tab)
{
    const int previous = std::exchange(tab_, tab);
    const bool fromText = previous == document::XmlMode
        || (previous == document::Preview && session_->state().TabTag == document::XmlMode);
    {
        const QScopedValueRollback<bool> same(keepsPlace_, true);
        session_->views().enteredTab(tab, previous);
    }
    if (currentTab() == tab)
        carryPlace(tab, fromText);
    quickTags_->modeChanged();
    tidy_->modeChanged();
    if (currentTab() == tab)
        focusView();
    mark_->refresh();
}

// Caret and selected node go along while text and tree are the same. A caret that stands in the selected node
// already stays where it is.
void mainfrm::carryPlace(int to, bool fromText)
{
    const document::DocumentState &state = session_->state();
    const bool isCarried = (to == document::NormalMode && fromText) || (to == document::XmlMode && !fromText);
    if (!isCarried || !state.known.agreed(state.domIdentity(), CodeMax1->revision()))
        return;
    const qsizetype caret = CodeMax1->send(QsciScintillaBase::SCI_GETCURRENTPOS);
    const qsizetype selected = place_->selectedOffset();
    if (to == document::NormalMode)
        place_->select(caret);
    else if (selected >= 0 && place_->nodeAt(caret) != TreeView1->currentIndex())
        CodeMax1->showPosition(long(selected));
}

// A tab reached with the keyboard keeps the focus, so that the arrow keys go on through the tabs.
void mainfrm::focusView()
{
    if (!frame_->tabs()->tabBar()->hasFocus())
        frame_->view(currentTab())->setFocus();
}

void mainfrm::documentGoing()
{
    if (keepsPlace_)
        place_->hold();
}

// The view selects and opens the root of a rebuilt tree.
void mainfrm::rebuildTree()
{
    tree::Freeze freeze;
    freeze.setForm(TreeView1);
    model_->nametree(session_->state().Document.documentElement());
    if (keepsPlace_)
        place_->restore();
}

void mainfrm::setModesEnabled(bool normal, bool xml, bool preview)
{
    commands_.action(QStringLiteral("mnunormalmod"))->setEnabled(normal);
    commands_.action(QStringLiteral("mnuxmlmode"))->setEnabled(xml);
    commands_.action(QStringLiteral("mnupreview"))->setEnabled(preview);
}

void mainfrm::showMenusFor(int tab)
{
    menus_.showFor(tab);
    commands_.offerTreeKeys(tab == document::NormalMode);
}

} // namespace app
