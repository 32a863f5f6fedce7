#include "document/recovery_copy.h"

#include "platform/files/raw_bytes.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>

namespace document {

namespace {

constexpr const char *sort = "xmleditor recovery 1 ";

struct Lines
{
    QByteArrayView checksum;
    QByteArrayView head;
    qsizetype headAt = -1; // negative when the two lines are not there
    qsizetype textAt = -1;
};

Lines linesOf(const QByteArray &bytes)
{
    const qsizetype first = bytes.indexOf('\n');
    const qsizetype second = first < 0 ? -1 : bytes.indexOf('\n', first + 1);
    if (second < 0 || !bytes.startsWith(sort))
        return {};
    const QByteArrayView view(bytes);
    const qsizetype checksumAt = qsizetype(std::strlen(sort));
    return {view.sliced(checksumAt, first - checksumAt), view.sliced(first + 1, second - first - 1),
            first + 1, second + 1};
}

QByteArray checksumOf(QByteArrayView head, QByteArrayView text)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    hash.addData(head);
    hash.addData(text);
    return hash.result().toHex();
}

QJsonObject toJson(const RecoveryCopy &copy)
{
    const RecoveryHead &head = copy.head;
    return {{QStringLiteral("path"), head.path},
            {QStringLiteral("encoding"), QString::fromLatin1(head.form.encoding.name)},
            {QStringLiteral("mark"), head.form.encoding.byteOrderMark},
            {QStringLiteral("declaredBy"), int(head.form.encoding.declared.by)},
            {QStringLiteral("declared"), QString::fromUtf8(head.form.encoding.declared.name)},
            {QStringLiteral("block"), int(head.form.encoding.block)},
            {QStringLiteral("end"), int(head.form.end)},
            {QStringLiteral("xmlMode"), head.mode == XmlMode},
            {QStringLiteral("changed"), double(head.changed.toMSecsSinceEpoch())},
            {QStringLiteral("size"), double(copy.text.size())}};
}

RecoveryHead fromJson(const QJsonObject &json)
{
    RecoveryHead head;
    head.path = json[QLatin1String("path")].toString();
    head.form.encoding.name = json[QLatin1String("encoding")].toString().toLatin1();
    head.form.encoding.byteOrderMark = json[QLatin1String("mark")].toBool();
    const int by = json[QLatin1String("declaredBy")].toInt();
    head.form.encoding.declared.by = files::DeclaredBy(qBound(0, by, int(files::DeclaredBy::Html)));
    head.form.encoding.declared.name = json[QLatin1String("declared")].toString().toUtf8();
    head.form.encoding.block = files::validBlock(json[QLatin1String("block")].toInt());
    const int end = json[QLatin1String("end")].toInt();
    head.form.end = end >= 0 && end <= int(files::FileEnd::None) ? files::FileEnd(end) : files::FileEnd::CrLf;
    head.mode = json[QLatin1String("xmlMode")].toBool() ? XmlMode : NormalMode;
    head.changed = QDateTime::fromMSecsSinceEpoch(qint64(json[QLatin1String("changed")].toDouble()));
    return head;
}

} // namespace

QByteArray sealedHead(const RecoveryCopy &copy)
{
    const QByteArray head = QJsonDocument(toJson(copy)).toJson(QJsonDocument::Compact) + '\n';
    return QByteArray(sort) + checksumOf(head, copy.text) + '\n' + head;
}

RecoveryBeginning readBeginning(const QByteArray &bytes)
{
    const Lines lines = linesOf(bytes);
    const QJsonDocument json = QJsonDocument::fromJson(lines.head.toByteArray());
    if (lines.textAt < 0 || !json.isObject())
        return {};
    const qint64 size = qint64(json.object()[QLatin1String("size")].toDouble(-1));
    return {fromJson(json.object()), lines.textAt + size, size >= 0};
}

OpenedCopy openCopy(const QByteArray &bytes)
{
    const Lines lines = linesOf(bytes);
    const RecoveryBeginning beginning = readBeginning(bytes);
    OpenedCopy opened;
    opened.copy.text = bytes.sliced(qMax(lines.textAt, qsizetype(0)));
    opened.whole = beginning.legible && beginning.fileSize == bytes.size()
        && lines.checksum
            == checksumOf(QByteArrayView(bytes).sliced(lines.headAt, lines.head.size() + 1),
                          opened.copy.text);
    if (opened.whole)
        opened.copy.head = beginning.head;
    else
        opened.copy
            = {{{}, {}, XmlMode, beginning.head.changed}, QString::fromUtf8(opened.copy.text).toUtf8()};
    return opened;
}

} // namespace document
