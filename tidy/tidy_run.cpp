#include "tidy/tidy_run.h"

#include "platform/control/editor_control.h"
#include "platform/files/file_helpers.h"
#include "platform/files/private_files.h"
#include "platform/system/shell.h"

#include <QDir>
#include <QFile>
#include <QLockFile>

#include <limits>
#include <optional>
#include <utility>

namespace tidy {

namespace {

constexpr int pollingInterval = 100; // milliseconds
constexpr qint64 largestAnswer = std::numeric_limits<qint32>::max(); // bytes; as a document
constexpr int longestLockWait = 2000; // milliseconds
constexpr int turningPoint = 95; // where the bar turns back to
constexpr int turnedBack = 5;
constexpr int done = 100;

std::optional<QByteArray> contentOf(const QString &path)
{
    platform::Result<QByteArray> bytes = files::readPrivateFile(path, largestAnswer);
    return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
}

// The exchange is UTF-8 whatever the markup declares. Neither the mark nor the file's final line end is text.
QByteArray textOf(QByteArray bytes)
{
    if (!QUtf8StringView(bytes).isValidUtf8())
        bytes = QString::fromUtf8(bytes).toUtf8();
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    if (bytes.endsWith('\n'))
        bytes.chop(bytes.endsWith("\r\n") ? 2 : 1);
    else if (bytes.endsWith('\r'))
        bytes.chop(1);
    return bytes;
}

} // namespace

TidyRun::TidyRun(const QString &programFolder, control::EditorControl &editor, ProgressBar &bar,
                 shell::Shell &shell, QObject *parent)
    : QObject(parent), folder_(programFolder), editor_(editor), bar_(bar), shell_(shell)
{
    timer_.setInterval(pollingInterval);
    connect(&timer_, &QTimer::timeout, this, &TidyRun::tick);
    clearScratch(); // of a launcher that ended with a program that was killed
}

TidyRun::~TidyRun() { endHelper(); }

void TidyRun::start(const QByteArray &markup, Put put)
{
    dropOutput();
    endHelper();
    put_ = std::move(put);
    if (!handOver(markup))
        return;
    revision_ = editor_.revision();
    progress_ = 0;
    bar_.showProgress(progress_);
    auto started = shell_.start(exchangeFile("proclltidy.exe"), folder_);
    if (started)
        helper_ = std::move(*started);
    else
        Q_EMIT note(started.reason());
    timer_.start();
}

void TidyRun::abandon()
{
    if (!inProgress() && !kept_)
        return;
    stop();
    dropOutput();
    Q_EMIT note(QStringLiteral("Tidy was given up: its text is no longer open."));
}

void TidyRun::cancel()
{
    if (!inProgress())
        return;
    stop();
    Q_EMIT note(QStringLiteral("Tidy was cancelled; the text stays as it is."));
}

void TidyRun::setEditorShown(bool shown)
{
    editorShown_ = shown;
    if (!shown && inProgress())
        Q_EMIT note(QStringLiteral("Tidy is still at work on the text of XML Mode."));
    if (!shown || !keepsOutput())
        return;
    putIn();
    if (offersOutput())
        Q_EMIT note(QStringLiteral("The document stays: it was changed meanwhile."));
    else
        Q_EMIT note(QStringLiteral("What Tidy made has been put in; Undo brings your text back."));
}

void TidyRun::takeOffer()
{
    if (!offersOutput())
        return;
    const QByteArray text = kept_->text;
    dropOutput();
    deliver(text);
}

// What the launcher leaves it leaves before it ends.
void TidyRun::tick()
{
    progress_ = progress_ == turningPoint ? turnedBack : progress_ + 1;
    bar_.showProgress(progress_);
    const bool over = helper_ && helper_->hasEnded();
    if (files::fileExists(exchangeFile("d.txt")))
        complete();
    else if (over)
        fail(QStringLiteral("Tidy's launcher ended without a result; the text stays as it is."));
}

// A launcher that is still at work looks under the same lock whether its input is still the one that stands
// here, so that it leaves nothing behind once this one does.
bool TidyRun::handOver(const QByteArray &markup)
{
    QLockFile lock(exchangeFile("lock"));
    lock.tryLock(longestLockWait);
    files::deleteIfExists(exchangeFile("i.txt")); // a launcher may still read it under a name of its own
    const QByteArrayView pieces[] = {markup, "\r\n"};
    const auto written = files::writePrivateFile(exchangeFile("i.txt"), exchangeFile("i.new"), pieces);
    if (!written) {
        Q_EMIT note(written.reason());
        return false;
    }
    if (!files::deleteIfExists(exchangeFile("d.txt"))) {
        Q_EMIT note(QStringLiteral("%1 cannot be deleted.").arg(exchangeFile("d.txt")));
        return false;
    }
    return true;
}

void TidyRun::complete()
{
    progress_ = done;
    bar_.showProgress(progress_);
    timer_.stop();
    takeOutput();
    bar_.hideProgress();
    Q_EMIT finished();
}

void TidyRun::fail(const QString &reason)
{
    stop();
    messages_ = {{0, 0, Severity::Error, reason}};
    counts_ = countsOf(messages_);
    Q_EMIT note(reason);
    Q_EMIT finished();
}

void TidyRun::takeOutput()
{
    std::optional<QByteArray> output = contentOf(exchangeFile("o.txt"));
    readReport(output.has_value());
    if (saysFailure(messages_)) {
        Q_EMIT note(messages_.front().text);
        return;
    }
    kept_ = Kept{textOf(std::move(*output))};
    if (editorShown_)
        putIn();
}

// What was typed while Tidy was at work is worth more than its layout.
void TidyRun::putIn()
{
    if (editor_.revision() == revision_) {
        deliver(std::exchange(kept_, std::nullopt)->text);
    } else {
        kept_->offered = true;
        Q_EMIT offerChanged();
    }
}

void TidyRun::deliver(const QByteArray &output)
{
    if (put_)
        put_(output);
    else
        editor_.replaceText(output);
}

void TidyRun::readReport(bool hasOutput)
{
    const QByteArray report = contentOf(exchangeFile("f.txt")).value_or(QByteArray());
    messages_ = messagesIn(report);
    counts_ = countsIn(report);
    if (hasOutput || saysFailure(messages_))
        return;
    messages_.insert(
        messages_.begin(),
        {0, 0, Severity::Error, QStringLiteral("Tidy left no output; the text stays as it is.")});
    ++counts_.errors;
}

void TidyRun::stop()
{
    if (inProgress())
        withdrawInput();
    timer_.stop();
    endHelper();
    bar_.hideProgress();
}

void TidyRun::endHelper()
{
    helper_.reset();
    clearScratch();
}

// A launcher that is ended in the midst of its work cannot clear its own folder away.
void TidyRun::clearScratch() const
{
    const QDir exchange(exchangeFile(""));
    for (const QString &name : exchange.entryList({QStringLiteral("run-*")}, QDir::Dirs))
        QDir(exchange.filePath(name)).removeRecursively();
}

void TidyRun::dropOutput()
{
    const bool offered = offersOutput();
    kept_.reset();
    if (offered)
        Q_EMIT offerChanged();
}

// A launcher at work finds that it is not wanted any more.
void TidyRun::withdrawInput()
{
    QLockFile lock(exchangeFile("lock"));
    lock.tryLock(longestLockWait);
    files::deleteIfExists(exchangeFile("i.txt"));
}

QString TidyRun::exchangeFile(const char *name) const
{
    return files::joinPath(folder_, QStringLiteral("\\tdyex\\") + QString::fromLatin1(name));
}

} // namespace tidy
