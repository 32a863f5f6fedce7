#include "app/command_line.h"

#include "platform/files/file_helpers.h"

#include <QCoreApplication>
#include <QUrl>

namespace app {

namespace {

QString usage()
{
    return QStringLiteral(
        "Usage: xmleditor [option] [--] [document...]\n"
        "\n"
        "Opens each document in a window of its own, and a new document where none is named.\n"
        "A document is a path or a file: address; one that does not exist is begun under its name.\n"
        "\n"
        "  -h, --help     show this and end\n"
        "  -v, --version  show the version and end\n"
        "  --             what follows is a document, whatever it begins with\n");
}

struct Option
{
    const char *name;
    CommandLine::Wish wish;
};

constexpr Option options[] = {
    {"-h", CommandLine::Wish::Help},
    {"--help", CommandLine::Wish::Help},
    {"-v", CommandLine::Wish::Version},
    {"--version", CommandLine::Wish::Version},
};

CommandLine answer(CommandLine::Wish wish, const QString &option)
{
    if (wish == CommandLine::Wish::Version)
        return {
            wish, {}, QStringLiteral("Zelph XML Editor %1\n").arg(QCoreApplication::applicationVersion())};
    if (wish == CommandLine::Wish::Help)
        return {wish, {}, usage()};
    return {wish,
            {},
            QStringLiteral("xmleditor: there is no option %1; xmleditor --help lists them.\n").arg(option)};
}

CommandLine::Wish wishOf(const QString &option)
{
    for (const Option &row : options)
        if (option == QLatin1String(row.name))
            return row.wish;
    return CommandLine::Wish::Refused;
}

// A name as it stands is meant before any address that it may look like.
QString pathOf(QString argument)
{
    if (files::fileExists(argument))
        return argument;
    const QUrl url(argument);
    return url.isLocalFile() ? url.toLocalFile() : argument.remove(QLatin1Char('"'));
}

QStringList pathsOf(const QStringList &arguments)
{
    const QString whole = arguments.join(QLatin1Char(' ')).remove(QLatin1Char('"'));
    if (arguments.size() > 1 && files::fileExists(whole))
        return {whole};
    QStringList paths;
    for (const QString &argument : arguments)
        if (const QString path = pathOf(argument); !path.isEmpty())
            paths.append(path);
    return paths;
}

} // namespace

CommandLine readCommandLine(const QStringList &arguments)
{
    QStringList named;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (argument == QStringLiteral("--")) {
            named += arguments.sliced(i + 1);
            break;
        }
        const bool isOption = argument.size() > 1 && argument.startsWith(QLatin1Char('-'));
        if (isOption && !files::fileExists(argument))
            return answer(wishOf(argument), argument);
        named.append(argument);
    }
    return {CommandLine::Wish::Edit, pathsOf(named), {}};
}

} // namespace app
