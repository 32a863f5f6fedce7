// Normal Mode, XML Mode and Preview: what is carried over at each switch, and what each mode offers.
#pragma once

#include "document/parsing.h"
#include "document/working_files.h"

#include <QStringView>
#include <array>
#include <span>

namespace document {

// One mode-dependent top-level menu, and whether it is shown in each mode, by tab number.
struct ModeMenu
{
    QStringView name; // `objectName` of the menu
    std::array<bool, 3> shown;
};

// Every menu that some mode hides; all others are always shown.
std::span<const ModeMenu> modeMenus();

class ViewModes
{
public:
    ViewModes(DocumentState &state, const Surroundings &around, Parsing &parsing, WorkingFiles &files)
        : state_(state), around_(around), parsing_(parsing), files_(files)
    { }

    // The tab switch handler. The window calls it on every change of tab, its own changes included, when
    // the new tab is already the current one. May select another tab, and is then entered again.
    void enteredTab(int newTab, int previousTab);

    // Enables or disables each mode's menu item and toolbar button.
    void tolbr(bool normal, bool xml, bool preview);

    // Shows and hides the mode-dependent menus for the current tab.
    void shwmens();

private:
    void enterNormalMode(int previousTab);
    void enterXmlMode(int previousTab);
    void enterPreview(int previousTab);
    bool cameFrom(Tab mode, int previousTab) const;

    DocumentState &state_;
    Surroundings around_;
    Parsing &parsing_;
    WorkingFiles &files_;
};

} // namespace document
