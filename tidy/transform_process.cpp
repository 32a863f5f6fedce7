#include "tidy/transform_process.h"

#include <utility>

namespace tidy {

namespace {

QString tookTooLong()
{
    return QStringLiteral(
        "The transformation failed. The style sheet takes more time than a transformation may.");
}

} // namespace

TransformProcess::TransformProcess(const QString &program, QObject *parent) : QObject(parent)
{
    process_.setProgram(program);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    longest_.setSingleShot(true);
    connect(&longest_, &QTimer::timeout, this, [this] { end(tookTooLong()); });
    connect(&process_, &QProcess::readyReadStandardOutput, this, &TransformProcess::takeAnswer);
    connect(&process_, &QProcess::finished, this, &TransformProcess::processEnded);
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            QMetaObject::invokeMethod(this, &TransformProcess::processEnded, Qt::QueuedConnection);
    });
}

TransformProcess::~TransformProcess()
{
    process_.disconnect(this);
    process_.kill();
    process_.waitForFinished();
}

void TransformProcess::start(const TransformJob &job)
{
    answer_ = {};
    ended_.clear();
    running_ = true;
    longest_.start(job.bounds.seconds * 1000);
    process_.start();
    process_.write(jobBlock(job)); // and no end after it: the program lives while its input is open
}

void TransformProcess::cancel() { end(QStringLiteral("The transformation was cancelled.")); }

void TransformProcess::end(const QString &why)
{
    if (!running_ || !ended_.isEmpty())
        return;
    ended_ = why;
    process_.kill();
}

void TransformProcess::takeAnswer()
{
    if (!answer_.take(process_.readAllStandardOutput()))
        end(QStringLiteral("The transformation failed. Its answer cannot be read."));
}

void TransformProcess::processEnded()
{
    if (!std::exchange(running_, false))
        return;
    longest_.stop();
    Transformation done = std::move(answer_.transformation());
    if (!ended_.isEmpty() || !answer_.isWhole())
        done.markup = platform::Failure{ended_.isEmpty() ? whyNoAnswer() : ended_};
    Q_EMIT finished(done);
}

QString TransformProcess::whyNoAnswer() const
{
    if (process_.error() == QProcess::FailedToStart)
        return QStringLiteral("%1 cannot be started: %2.").arg(process_.program(), process_.errorString());
    return QStringLiteral(
        "The transformation broke down. The style sheet may take more memory or time than a "
        "transformation may.");
}

} // namespace tidy
