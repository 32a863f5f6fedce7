// What the main window's own commands do. Those of the editor are bound in editor_routing.cpp.
#include "app/about.h"
#include "app/all_commands.h"
#include "app/appearance.h"
#include "app/command_list.h"
#include "app/editor_host.h"
#include "app/main_window.h"
#include "app/quick_tags_host.h"
#include "app/tidy_host.h"
#include "platform/browser/web_browser.h"

namespace app {

void mainfrm::bindCommands()
{
    struct Binding
    {
        const char *name;
        void (mainfrm::*run)();
    };
    static constexpr Binding bindings[] = {
        {"mnuNew", &mainfrm::New},
        {"mnuOpen", &mainfrm::Open},
        {"mnuSave", &mainfrm::Save},
        {"mnuSaveas", &mainfrm::SaveAs},
        {"mnuexit", &mainfrm::Exit},
        {"mnuchlxmler", &mainfrm::checkForErrors},
        {"mnunormalmod", &mainfrm::normalMode},
        {"mnuxmlmode", &mainfrm::xmlMode},
        {"mnupreview", &mainfrm::preview},
        {"mnuQuicktag", &mainfrm::quickTags},
        {"mnucleancod", &mainfrm::convertAndTidy},
        {"mnuCleaningOptions", &mainfrm::tidyOptions},
        {"mnutidymessages", &mainfrm::tidyMessages},
        {"savmac", &mainfrm::saveMacros},
        {"searchcmxsub_15", &mainfrm::countAll},
        {"mnuAssignedfilePre", &mainfrm::assignedPreview},
        {"mnucontenets", &mainfrm::helpContents},
        {"mnuindex", &mainfrm::helpIndex},
        {"mnuSearch", &mainfrm::helpSearch},
        {"mnuabout", &mainfrm::about},
        {"mnucommands", &mainfrm::listCommands},
        {"back", &mainfrm::browseBack},
        {"forward", &mainfrm::browseForward},
        {"refreash", &mainfrm::browseReload},
    };
    for (const Binding &binding : bindings)
        commands_.bind(binding.name, [this, run = binding.run] { (this->*run)(); });
    bindAppearances();
    commands_.setBeforeRun([this] { note({}); });
    commands_.disableUnbound();
    browsed(); // nowhere yet
}

void mainfrm::bindAppearances()
{
    for (const Appearance &row : appearances())
        commands_.bind(row.command, [this, &row] {
            putOn(row, &settings_);
            showAppearance(row);
        });
    showAppearance(chosenAppearance(settings_));
}

void mainfrm::showAppearance(const Appearance &chosen)
{
    for (const Appearance &row : appearances())
        commands_.action(QLatin1String(row.command))->setChecked(row.ground == chosen.ground);
}

void mainfrm::New() { session_->life().newDocument(); }

void mainfrm::Open() { session_->life().open(); }

void mainfrm::Save() { session_->saving().save(); }

void mainfrm::SaveAs() { session_->saving().saveAs(); }

void mainfrm::Exit() { close(); }

void mainfrm::checkForErrors() { session_->parsing().xmlerr(true, true); }

void mainfrm::normalMode() { chooseMode(document::NormalMode); }

void mainfrm::xmlMode() { chooseMode(document::XmlMode); }

void mainfrm::preview() { chooseMode(document::Preview); }

void mainfrm::helpContents() { session_->life().openHelp(document::HelpPage::Contents); }

void mainfrm::helpIndex() { session_->life().openHelp(document::HelpPage::Index); }

void mainfrm::helpSearch() { session_->life().openHelp(document::HelpPage::Search); }

void mainfrm::about()
{
    frmAbout box(this, [this](const QString &address) { openAddress(address); });
    box.exec();
}

void mainfrm::listCommands()
{
    std::function<void()> run;
    {
        CommandList list(allCommands(commands_, *CodeMax1, currentTab()), this);
        list.exec();
        run = list.chosen();
    }
    focusView();
    if (run)
        run();
}

void mainfrm::quickTags() { quickTags_->show(this); }

void mainfrm::convertAndTidy() { tidy_->convert(); }

void mainfrm::tidyOptions() { tidy_->editOptions(); }

void mainfrm::tidyMessages() { tidy_->showMessages(); }

void mainfrm::saveMacros() { editorHost_->saveMacros(); }

void mainfrm::countAll() { editorHost_->countAll(); }

void mainfrm::assignedPreview() { editorHost_->toggleAssignedPreview(); }

void mainfrm::browseBack() { WebBrowser1->back(); }

void mainfrm::browseForward() { WebBrowser1->forward(); }

void mainfrm::browseReload() { WebBrowser1->reload(); }

} // namespace app
