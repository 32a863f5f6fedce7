#include "app/tidy_host.h"

#include "platform/control/code_editor.h"
#include "platform/files/user_folders.h"
#include "tidy/config_files.h"
#include "tidy/frmconvrtr.h"
#include "tidy/messages_panel.h"
#include "tidy/tidyopfrm.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QProgressBar>

namespace app {

TidyHost::TidyHost(const Around &around)
    : around_(around), run_(around_.folders.exchange(), around_.editor, *this, around_.shell),
      services_{
          .programFolder = around_.folders.exchange(),
          .dialogs = around_.dialogs,
          .currentText = [this] { return around_.editor.text(); },
          .currentPath = around_.currentPath,
          .runTidy = [this](const QByteArray &markup) { run(markup); },
          .showMessages = [this](const std::vector<tidy::Message> &messages) { tellMessages(messages); },
      },
      dock_(new QDockWidget(tidy::messagesTitle(), &around_.window)), panel_(new tidy::MessagesPanel(dock_))
{
    addPanel();
    connect(&run_, &tidy::TidyRun::note, this, around_.note);
    connect(&run_, &tidy::TidyRun::finished, this, [this] { tellMessages(run_.messages()); });
    connect(panel_, &tidy::MessagesPanel::placeChosen, this, &TidyHost::goTo);
}

void TidyHost::convert() { tidy::frmconvrtr(services_, &around_.window).exec(); }

// The options are the user's, the run is this window's.
void TidyHost::run(const QByteArray &markup)
{
    const auto lent = tidy::lendStandingOptions(around_.folders.data(), around_.folders.exchange());
    if (!lent)
        around_.note(lent.reason());
    run_.start(markup);
}

void TidyHost::editOptions()
{
    tidy::tidyopfrm(around_.folders.data(), around_.dialogs, &around_.window).exec();
}

void TidyHost::showMessages()
{
    dock_->show();
    dock_->raise();
    panel_->setFocus();
}

void TidyHost::showProgress(int value)
{
    around_.bar.setValue(value);
    around_.bar.show();
    around_.bar.raise();
}

void TidyHost::hideProgress() { around_.bar.hide(); }

void TidyHost::addPanel()
{
    dock_->setObjectName(QStringLiteral("dockTidyMessages"));
    dock_->setWidget(panel_);
    dock_->setAllowedAreas(Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    around_.window.addDockWidget(Qt::BottomDockWidgetArea, dock_);
    dock_->hide();
}

// The panel does not open by itself: most runs say something, and few of it matters.
void TidyHost::tellMessages(const std::vector<tidy::Message> &messages)
{
    panel_->showMessages(messages);
    if (!messages.empty() && !dock_->isVisible())
        around_.note(QStringLiteral("%1 messages: see \"%2\" in the \"Tools\" menu")
                         .arg(messages.size())
                         .arg(tidy::messagesTitle()));
}

void TidyHost::goTo(int line, int column)
{
    around_.editor.placeCaret(line - 1, qMax(0, column - 1));
    around_.editor.giveFocus();
}

} // namespace app
