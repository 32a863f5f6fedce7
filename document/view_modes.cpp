#include "document/view_modes.h"

namespace document {

std::span<const ModeMenu> modeMenus()
{
    static constexpr std::array menus{
        ModeMenu{u"mnuedittag", {true, false, false}}, //
        ModeMenu{u"editcmx", {false, true, false}}, //
        ModeMenu{u"searchcmx", {false, true, false}}, //
        ModeMenu{u"mnumacro", {false, true, false}}, //
        ModeMenu{u"mnuinsert", {true, true, false}}, //
    };
    return menus;
}

void ViewModes::enteredTab(int newTab, int previousTab)
{
    around_.workspace.layOut();
    switch (newTab) {
    case NormalMode:
        enterNormalMode(previousTab);
        break;
    case XmlMode:
        enterXmlMode(previousTab);
        break;
    default:
        enterPreview(previousTab);
    }
    shwmens();
}

void ViewModes::enterNormalMode(int previousTab)
{
    if (cameFrom(XmlMode, previousTab))
        parsing_.adoptEditorText();
    state_.TabTag = NormalMode;
    tolbr(false, true, true);
    // Last, so that the mode the user ends up in has the last word on the buttons.
    if (state_.HasParseErrors)
        around_.workspace.selectTab(XmlMode);
}

void ViewModes::enterXmlMode(int previousTab)
{
    around_.workspace.enterEditor();
    if (cameFrom(NormalMode, previousTab))
        parsing_.carryToEditor();
    state_.TabTag = XmlMode;
    tolbr(true, false, true);
}

void ViewModes::enterPreview(int previousTab)
{
    files_.preview(previousTab == XmlMode ? around_.editor.text() : state_.Document.xml());
    tolbr(true, true, false);
}

// Whether the view left showed mode's side of the document: directly, or in a preview of it.
bool ViewModes::cameFrom(Tab mode, int previousTab) const
{
    return previousTab == mode || (previousTab == Preview && state_.TabTag == mode);
}

void ViewModes::tolbr(bool normal, bool xml, bool preview)
{
    around_.workspace.setModesEnabled(normal, xml, preview);
}

void ViewModes::shwmens() { around_.workspace.showMenusFor(around_.workspace.currentTab()); }

} // namespace document
