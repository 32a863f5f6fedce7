#include "app/check_progress.h"

#include <QApplication>
#include <QCursor>

namespace app {

namespace {

constexpr int widthInCharacters = 50; // for the title to be read

// Every timer but those of one window and of what moves in it waits: none of them is lost, they are due
// again.
class TimersWait : public QObject
{
public:
    explicit TimersWait(QObject &but) : but_(but) { qApp->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() != QEvent::Timer || object->inherits("QUnifiedTimer")
            || object->inherits("QAnimationDriver"))
            return false;
        for (; object; object = object->parent()) {
            if (object == &but_)
                return false;
        }
        return true;
    }

private:
    QObject &but_;
};

} // namespace

CheckProgress::~CheckProgress()
{
    if (!isShown_)
        return;
    delete dialog_.data();
    QApplication::restoreOverrideCursor();
}

bool CheckProgress::goOn()
{
    if (clock_.elapsed() < (isShown_ ? pause_ : patience_))
        return true;
    if (!isShown_)
        show();
    {
        // No socket either: what other programs have to say comes afterwards.
        const TimersWait wait(*dialog_);
        QApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    }
    clock_.restart();
    return !dialog_.isNull() && !dialog_->wasCanceled() && dialog_->isVisible();
}

void CheckProgress::show()
{
    isShown_ = true;
    QApplication::setOverrideCursor(Qt::ArrowCursor); // over the busy one: there is something to click
    dialog_ = new QProgressDialog(QProgressDialog::tr("Checking the document..."),
                                  QProgressDialog::tr("Stop"), 0, 0, parent_.data());
    dialog_->setObjectName(QStringLiteral("CheckProgress"));
    dialog_->setAccessibleName(dialog_->labelText());
    dialog_->setWindowTitle(QStringLiteral("Zelph XML Editor"));
    dialog_->setMinimumWidth(dialog_->fontMetrics().averageCharWidth() * widthInCharacters);
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setMinimumDuration(0);
    dialog_->show();
}

} // namespace app
