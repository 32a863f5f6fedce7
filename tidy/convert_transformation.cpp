#include "tidy/convert_transformation.h"

#include "platform/files/file_helpers.h"
#include "platform/files/text_file.h"

#include <QFileInfo>

namespace tidy {

namespace {

QString placeName(const TransformMessage &message, const QString &file)
{
    const QString path = message.place == TransformPlace::OtherFile ? message.file : file;
    return QStringLiteral("%1, line %2: ").arg(files::fileNameOf(path)).arg(message.line);
}

} // namespace

platform::Result<TransformJob> jobWithFile(CurrentTextIs role, const TransformInput &current,
                                           const QString &file)
{
    const auto loaded = files::readTextFile(file);
    if (!loaded)
        return platform::Failure{loaded.reason()};
    const TransformInput other{loaded->utf8, files::fullPath(file)};
    return role == CurrentTextIs::Xml ? TransformJob{current, other, {}, {}}
                                      : TransformJob{other, current, {}, {}};
}

std::vector<Message> messagesOfCurrent(const std::vector<TransformMessage> &messages, CurrentTextIs role,
                                       const QString &file)
{
    const TransformPlace here
        = role == CurrentTextIs::Xml ? TransformPlace::Document : TransformPlace::StyleSheet;
    std::vector<Message> out;
    for (const TransformMessage &message : messages) {
        const bool isHere = message.place == here;
        const bool isNowhere = message.place == TransformPlace::Nowhere;
        out.push_back({isHere ? message.line : 0, isHere ? 1 : 0, message.severity,
                       isHere || isNowhere ? message.text : placeName(message, file) + message.text});
    }
    return out;
}

QString proposedResult(const QString &document)
{
    const QFileInfo source(document);
    const QString stem = source.path() + u'/' + source.completeBaseName();
    QString proposed = stem + QStringLiteral(".html");
    for (int number = 1; files::fileExists(proposed); ++number) {
        const QString count = number == 1 ? QString() : QString::number(number);
        proposed = stem + QStringLiteral("-result") + count + QStringLiteral(".html");
    }
    return proposed;
}

} // namespace tidy
