#include "tidy/transform_wire.h"

#include <QDataStream>

#include <limits>

namespace tidy {

namespace {

enum class Kind : qint8
{
    Message,
    Outcome
};

constexpr qint64 longestBlock = std::numeric_limits<qint32>::max();

QDataStream &operator<<(QDataStream &stream, const TransformInput &input)
{
    return stream << input.utf8 << input.path;
}

QDataStream &operator>>(QDataStream &stream, TransformInput &input)
{
    return stream >> input.utf8 >> input.path;
}

QDataStream &operator<<(QDataStream &stream, const TransformBounds &bounds)
{
    return stream << bounds.depth << quint64(bounds.instructions) << quint64(bounds.steps)
                  << quint64(bounds.memory) << quint64(bounds.traffic) << bounds.documents << bounds.messages
                  << qint64(bounds.output) << bounds.seconds;
}

template <typename Number, typename Carried>
void read(QDataStream &stream, Number &number)
{
    Carried carried{};
    stream >> carried;
    number = static_cast<Number>(carried);
}

QDataStream &operator>>(QDataStream &stream, TransformBounds &bounds)
{
    stream >> bounds.depth;
    read<unsigned long, quint64>(stream, bounds.instructions);
    read<unsigned long, quint64>(stream, bounds.steps);
    read<std::size_t, quint64>(stream, bounds.memory);
    read<std::size_t, quint64>(stream, bounds.traffic);
    stream >> bounds.documents >> bounds.messages;
    read<qsizetype, qint64>(stream, bounds.output);
    return stream >> bounds.seconds;
}

template <typename... Parts>
QByteArray block(const Parts &...parts)
{
    QByteArray content;
    QDataStream stream(&content, QIODevice::WriteOnly);
    (stream << ... << parts);
    QByteArray length;
    QDataStream(&length, QIODevice::WriteOnly) << qint64(content.size());
    return length + content;
}

} // namespace

QByteArray jobBlock(const TransformJob &job)
{
    return block(job.document, job.styleSheet, job.licence.files, job.licence.newerSheets, job.bounds,
                 job.parameters);
}

QByteArray messageBlock(const TransformMessage &message)
{
    return block(qint8(Kind::Message), qint32(message.severity), qint32(message.place), message.line,
                 message.file, message.text);
}

QByteArray outcomeBlock(const Transformation &done)
{
    return block(qint8(Kind::Outcome), done.markup.ok(), done.markup ? *done.markup : QByteArray(),
                 done.markup.reason(), done.refused, done.newerSheets);
}

qint64 blockLength(const QByteArray &length)
{
    qint64 bytes = 0;
    QDataStream(length) >> bytes;
    return bytes;
}

std::optional<TransformJob> jobIn(const QByteArray &block)
{
    TransformJob job;
    QDataStream stream(block);
    stream >> job.document >> job.styleSheet >> job.licence.files >> job.licence.newerSheets >> job.bounds
        >> job.parameters;
    return stream.status() == QDataStream::Ok ? std::optional(job) : std::nullopt;
}

bool TransformAnswer::take(const QByteArray &bytes)
{
    waiting_ += bytes;
    qsizetype at = 0;
    while (waiting_.size() - at >= lengthBytes) {
        const qint64 length = blockLength(waiting_.mid(at, lengthBytes));
        if (length < 0 || length > longestBlock)
            return false;
        if (waiting_.size() - at - lengthBytes < length)
            break;
        if (whole_ || !takeBlock(waiting_.mid(at + lengthBytes, length)))
            return false;
        at += lengthBytes + length;
    }
    waiting_.remove(0, at);
    return true;
}

bool TransformAnswer::takeBlock(const QByteArray &block)
{
    QDataStream stream(block);
    qint8 kind = 0;
    stream >> kind;
    if (Kind(kind) == Kind::Message) {
        TransformMessage message;
        read<Severity, qint32>(stream, message.severity);
        read<TransformPlace, qint32>(stream, message.place);
        stream >> message.line >> message.file >> message.text;
        done_.messages.push_back(std::move(message));
    } else {
        bool ok = false;
        QByteArray markup;
        QString reason;
        stream >> ok >> markup >> reason >> done_.refused >> done_.newerSheets;
        done_.markup = ok ? platform::Result<QByteArray>(markup) : platform::Failure{reason};
        whole_ = true;
    }
    return stream.status() == QDataStream::Ok;
}

} // namespace tidy
