#include "tidy/tidy_run.h"

#include "platform/control/editor_control.h"
#include "platform/files/file_helpers.h"
#include "platform/files/private_files.h"
#include "platform/system/shell.h"

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
}

void TidyRun::start(const QByteArray &markup, Put put)
{
    kept_.reset();
    put_ = std::move(put);
    if (!handOver(markup))
        return;
    progress_ = 0;
    bar_.showProgress(progress_);
    const auto started = shell_.start(exchangeFile("proclltidy.exe"), folder_);
    if (!started)
        Q_EMIT note(started.reason());
    timer_.start();
}

void TidyRun::abandon()
{
    if (!inProgress() && !kept_)
        return;
    if (inProgress())
        withdrawInput();
    timer_.stop();
    bar_.hideProgress();
    kept_.reset();
    Q_EMIT note(QStringLiteral("Tidy was given up: its text is no longer open."));
}

void TidyRun::setEditorShown(bool shown)
{
    editorShown_ = shown;
    if (!shown && inProgress())
        Q_EMIT note(QStringLiteral("Tidy is still at work on the text of XML Mode."));
    if (!shown || !kept_)
        return;
    const Kept kept = *std::exchange(kept_, std::nullopt);
    if (editor_.revision() == kept.revision)
        putIn(kept.text);
    else
        Q_EMIT note(QStringLiteral("The document was changed meanwhile; what Tidy made is left out."));
}

void TidyRun::tick()
{
    progress_ = progress_ == turningPoint ? turnedBack : progress_ + 1;
    bar_.showProgress(progress_);
    if (files::fileExists(exchangeFile("d.txt")))
        complete();
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

void TidyRun::takeOutput()
{
    std::optional<QByteArray> output = contentOf(exchangeFile("o.txt"));
    readReport(output.has_value());
    if (saysFailure(messages_))
        Q_EMIT note(messages_.front().text);
    else if (editorShown_)
        putIn(textOf(std::move(*output)));
    else
        kept_ = Kept{textOf(std::move(*output)), editor_.revision()};
}

void TidyRun::putIn(const QByteArray &output)
{
    if (put_)
        put_(output);
    else
        editor_.replaceText(output);
}

void TidyRun::readReport(bool hasOutput)
{
    messages_ = messagesIn(contentOf(exchangeFile("f.txt")).value_or(QByteArray()));
    if (!hasOutput && !saysFailure(messages_))
        messages_.insert(
            messages_.begin(),
            {0, 0, Severity::Error, QStringLiteral("Tidy left no output; the text stays as it is.")});
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
