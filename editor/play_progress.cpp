#include "editor/play_progress.h"

#include "editor/macro_words.h"

#include <QCoreApplication>

namespace editor {

namespace {

constexpr int patience = 5; // times asked before anything is shown
constexpr int wholeBar = 1000;

} // namespace

bool PlayProgress::goOn(const QString &name, const control::PlayReport &report)
{
    if (++asked_ < patience)
        return true;
    if (dialog_.isNull())
        show();
    dialog_->setLabelText(
        QStringLiteral("%1: %2 so far. Esc stops it.").arg(name, countedSteps(report.steps)));
    dialog_->setValue(int(report.part * wholeBar));
    QCoreApplication::processEvents();
    // Events can do anything, such as close the program. A dialog closed by its window's key is only hidden.
    return !dialog_.isNull() && !dialog_->wasCanceled() && dialog_->isVisible();
}

void PlayProgress::show()
{
    dialog_ = new QProgressDialog(QString(), QStringLiteral("Stop"), 0, wholeBar, parent_.data());
    dialog_->setObjectName(QStringLiteral("frmMacroProgress"));
    dialog_->setWindowTitle(QStringLiteral("Macro"));
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setMinimumDuration(0);
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
    dialog_->show();
}

void PlayProgress::end()
{
    asked_ = 0;
    delete dialog_.data();
}

} // namespace editor
