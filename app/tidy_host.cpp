#include "app/tidy_host.h"

#include "document/workspace.h"
#include "platform/control/code_editor.h"
#include "platform/files/user_folders.h"
#include "tidy/config_files.h"
#include "tidy/frmconvrtr.h"
#include "tidy/messages_panel.h"
#include "tidy/option_catalogue.h"
#include "tidy/option_values.h"
#include "tidy/text_place.h"
#include "tidy/tidyopfrm.h"

#include <QCryptographicHash>
#include <QDockWidget>
#include <QKeyEvent>
#include <QMainWindow>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolButton>

namespace app {

TidyHost::TidyHost(const Around &around)
    : around_(around), run_(around_.folders.exchange(), around_.editor, *this, around_.shell),
      services_{
          .programFolder = around_.folders.exchange(),
          .dialogs = around_.dialogs,
          .currentText = [this] { return around_.editor.text(); },
          .currentPath = around_.currentPath,
          .runTidy = [this](const QByteArray &markup) { run(markup); },
          .runTidyOnResult = [this](const QByteArray &markup,
                                    const QString &document) { run(markup, tidy::proposedResult(document)); },
          .allowedFiles = [this] { return allowedFiles_.value(around_.currentPath()); },
          .allowFiles
          = [this](const QStringList &files) { allowedFiles_.insert(around_.currentPath(), files); },
          .showMessages
          = [this](const std::vector<tidy::Message> &messages) { takeTransformMessages(messages); },
          .choices = &choices_,
      },
      cmdcanceltidy(new QToolButton(&around_.window)), cmdtidyresult(new QToolButton(&around_.window)),
      dock_(new QDockWidget(tidy::messagesTitle(), &around_.window)), panel_(new tidy::MessagesPanel(dock_))
{
    addPanel();
    addButtons();
    connect(&run_, &tidy::TidyRun::note, this, around_.note);
    connect(&run_, &tidy::TidyRun::finished, this, &TidyHost::runEnded);
    connect(&around_.editor, &control::CodeEditor::textEdited, this, &TidyHost::textEdited);
    connect(panel_, &tidy::MessagesPanel::placeChosen, this, &TidyHost::goTo);
}

void TidyHost::convert() { tidy::frmconvrtr(services_, &around_.window).exec(); }

// The options are the user's, the run is this window's.
void TidyHost::run(const QByteArray &markup, const QString &proposed)
{
    const auto lent = tidy::lendStandingOptions(around_.folders.data(), around_.folders.exchange());
    if (!lent)
        around_.note(lent.reason());
    spokenOf_ = textIdentity();
    runOnText_ = markup == around_.editor.textInPlace();
    if (runOnText_)
        transformMessages_.clear(); // of an earlier one that led to no run
    const tidy::OptionValues options = tidy::OptionValues::read(around_.folders.data());
    tabSize_ = options.value(tidy::findOption(QStringLiteral("tab-size"))).toInt();
    proposed_ = proposed;
    run_.start(
        markup, proposed.isEmpty() ? tidy::TidyRun::Put() : [this](const QByteArray &output) {
            around_.takeResult(output, proposed_);
        });
}

void TidyHost::modeChanged() { run_.setEditorShown(around_.currentTab() == document::XmlMode); }

// Another document was put into the editor: that cannot be undone, as any edit can.
void TidyHost::textEdited()
{
    if (around_.editor.canUndo() || around_.editor.canRedo())
        return;
    run_.abandon();
    panel_->showMessages({});
    dock_->hide(); // it was about the other
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
    cmdcanceltidy->show();
}

void TidyHost::hideProgress()
{
    around_.bar.hide();
    cmdcanceltidy->hide();
}

// Escape, where the text is, means the wait that the user sees there.
bool TidyHost::eventFilter(QObject *watched, QEvent *event)
{
    const bool escape = run_.inProgress() && event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel);
    if (escape)
        run_.cancel();
    return escape || QObject::eventFilter(watched, event);
}

void TidyHost::addButtons()
{
    const auto add = [this](QToolButton *button, const char *name, const QString &text, const QString &tip) {
        button->setObjectName(QLatin1StringView(name));
        button->setText(text);
        button->setToolTip(tip);
        button->setFocusPolicy(Qt::TabFocus);
        around_.window.statusBar()->addPermanentWidget(button);
        button->hide();
    };
    add(cmdcanceltidy, "cmdcanceltidy", QStringLiteral("Cancel Tidy"),
        QStringLiteral("Ends Tidy and leaves the text as it is (Esc in the text)"));
    add(cmdtidyresult, "cmdtidyresult", QStringLiteral("Use Tidy's Result"),
        QStringLiteral("Replaces the text, which was changed while Tidy was at work; Undo brings it back"));
    connect(cmdcanceltidy, &QToolButton::clicked, &run_, &tidy::TidyRun::cancel);
    connect(cmdtidyresult, &QToolButton::clicked, this, [this] {
        around_.showXmlMode();
        run_.takeOffer();
        around_.note(QStringLiteral("Undo brings your text back."));
    });
    connect(&run_, &tidy::TidyRun::offerChanged, this,
            [this] { cmdtidyresult->setVisible(run_.offersOutput()); });
    around_.editor.installEventFilter(this);
}

void TidyHost::addPanel()
{
    dock_->setObjectName(QStringLiteral("dockTidyMessages"));
    dock_->setWidget(panel_);
    dock_->setAllowedAreas(Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    around_.window.addDockWidget(Qt::BottomDockWidgetArea, dock_);
    dock_->hide();
}

void TidyHost::takeTransformMessages(const std::vector<tidy::Message> &messages)
{
    spokenOf_ = textIdentity();
    transformMessages_ = messages;
    const tidy::Counts counts = tidy::countsOf(messages);
    panel_->showMessages(messages, counts);
    if (!messages.empty())
        around_.note(summaryOf(counts));
}

// What Tidy says of a transformation's result is about no line that the editor ever shows.
void TidyHost::runEnded()
{
    std::vector<tidy::Message> messages = run_.messages();
    for (tidy::Message &message : messages) {
        if (!runOnText_ && message.line > 0)
            message = {0, 0, message.severity,
                       QStringLiteral("Line %1 of the result: ").arg(message.line) + message.text};
    }
    messages.insert(messages.begin(), transformMessages_.begin(), transformMessages_.end());
    tidy::Counts counts = tidy::countsOf(transformMessages_);
    counts.errors += run_.counts().errors;
    counts.warnings += run_.counts().warnings;
    panel_->showMessages(messages, counts);
    if (tidy::saysFailure(run_.messages()))
        return; // has been noted
    if (run_.offersOutput())
        return around_.note(QStringLiteral("The text stays: it was changed meanwhile."));
    QString where;
    if (run_.keepsOutput())
        where = QStringLiteral("What Tidy made is put in when XML Mode is shown. ");
    else if (!proposed_.isEmpty())
        where = QStringLiteral("The result is a new document; Undo leads back. ");
    around_.note(where + summaryOf(counts));
}

// The panel does not open by itself: most runs say something, and few of it matters.
QString TidyHost::summaryOf(const tidy::Counts &counts) const
{
    const bool matters = counts.errors + counts.warnings > 0;
    if (!matters && transformMessages_.empty())
        return QStringLiteral("Tidy found nothing to warn of.");
    const QString said = matters ? tidy::summaryOf(counts) : QStringLiteral("The style sheet left messages");
    const QString where = QStringLiteral(": see \"%1\" in the \"Tools\" menu").arg(tidy::messagesTitle());
    return dock_->isVisible() ? said : said + where;
}

void TidyHost::goTo(int line, int column)
{
    around_.showXmlMode();
    if (textIdentity() != spokenOf_)
        return around_.note(
            QStringLiteral("Line %1 is in the text before the conversion; Undo brings that text back.")
                .arg(line));
    const QByteArray text = around_.editor.textInPlace();
    around_.editor.placeCaret(line - 1, tidy::characterAt(text, line, column, tabSize_));
    around_.editor.giveFocus();
}

QByteArray TidyHost::textIdentity() const
{
    return QCryptographicHash::hash(around_.editor.textInPlace(), QCryptographicHash::Sha1);
}

} // namespace app
