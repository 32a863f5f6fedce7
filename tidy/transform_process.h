// A transformation in a process of its own, which may take its time, fail in any way, and be ended.
#pragma once

#include "tidy/transform_wire.h"

#include <QObject>
#include <QProcess>
#include <QTimer>

namespace tidy {

class TransformProcess : public QObject
{
    Q_OBJECT

public:
    // The program that carries it out.
    explicit TransformProcess(const QString &program, QObject *parent = nullptr);

    // Ends what runs.
    ~TransformProcess() override;

    // At once; finished() follows, whatever happens. One at a time.
    void start(const TransformJob &job);

    // Ends what runs; finished() follows.
    void cancel();

    bool isRunning() const { return running_; }

Q_SIGNALS:
    // With all that the style sheet said before its end, of whatever kind that was.
    void finished(const tidy::Transformation &done);

private:
    void end(const QString &why);
    void takeAnswer();
    void processEnded();
    QString whyNoAnswer() const;

    QProcess process_;
    QTimer longest_;
    TransformAnswer answer_;
    QString ended_; // why it was, by us; empty while it runs
    bool running_ = false;
};

} // namespace tidy
