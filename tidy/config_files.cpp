#include "tidy/config_files.h"

#include "platform/files/file_helpers.h"
#include "platform/files/text_file.h"

#include <QFile>

namespace tidy {

namespace {

constexpr const char *outputLines[] = {"output-xml: yes", "output-html: yes", "output-xhtml: yes"};

} // namespace

QString standingOptionsFile(const QString &programFolder)
{
    return files::joinPath(programFolder, QStringLiteral("/tdyex/default.tidy"));
}

QString perRunOptionsFile(const QString &programFolder)
{
    return files::joinPath(programFolder, QStringLiteral("\\tdyex\\default2.tidy"));
}

platform::Result<void> lendStandingOptions(const QString &from, const QString &to)
{
    if (from == to)
        return {};
    QFile options(standingOptionsFile(from));
    if (!options.open(QIODevice::ReadOnly))
        return platform::Failure{QStringLiteral("%1 cannot be read.").arg(options.fileName())};
    return files::writeTextFile(standingOptionsFile(to), options.readAll());
}

platform::Result<void> writeConversionOptions(const QString &programFolder, InputKind input,
                                              OutputKind output)
{
    const QByteArray first = input == InputKind::Xml ? "input-xml: yes" : "input-xml: no";
    return files::writeTextFile(perRunOptionsFile(programFolder), first + "\r\n" + outputLines[int(output)]);
}

platform::Result<void> writeTransformationOptions(const QString &programFolder)
{
    return files::writeTextFile(perRunOptionsFile(programFolder), outputLines[int(OutputKind::Html)]);
}

} // namespace tidy
