// Any bytes as files of Tidy options, as Tidy's report, and as a text on its way through Tidy: read, kept,
// and never a file named to Tidy.
#include "fuzz/require.h"
#include "tidy/config_files.h"
#include "tidy/launcher/blank_repair.h"
#include "tidy/launcher/conversion.h"
#include "tidy/launcher/run_options.h"
#include "tidy/option_catalogue.h"
#include "tidy/option_values.h"
#include "tidy/tidy_messages.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fuzzer/FuzzedDataProvider.h>

using fuzz::require;

namespace {

void checkConfiguration(const QByteArray &standing, const QByteArray &perRun, const QByteArray &text)
{
    const launcher::RunOptions options = launcher::reconciledOptions({standing, perRun}, text);
    for (const QByteArray &line : options.configuration.split('\n')) {
        if (line.isEmpty())
            continue;
        const QByteArray name = line.first(qMax(line.indexOf(':'), 0));
        require(!name.isEmpty(), "a line names an option");
        require(
            std::all_of(name.begin(), name.end(),
                        [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-'; }),
            "in letters that Tidy reads as they stand");
        require(launcher::presentName(name) == name, "by a name that Tidy may be told");
        require(!line.contains('\r') && !line.contains('\0'), "on one line");
    }
}

void checkStandingOptions(const QByteArray &bytes)
{
    static const QTemporaryDir program;
    QDir(program.path()).mkpath(QStringLiteral("tdyex"));
    QFile file(tidy::standingOptionsFile(program.path()));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the file is there");
    file.close();
    const tidy::OptionValues options = tidy::OptionValues::read(program.path());
    require(options.save(program.path()).ok(), "it can be written");
    const tidy::OptionValues again = tidy::OptionValues::read(program.path());
    require(again.changedOptions() == options.changedOptions(), "the list is kept");
    for (int index = 0; index < tidy::listedOptions; ++index)
        require(again.value(index) == options.value(index), "and so are the values");
}

// Tidy may write anything. A text that it left alone is left alone.
void checkConversion(const QByteArray &text, const QByteArray &tidied)
{
    for (const auto dialect : {launcher::Dialect::Xml, launcher::Dialect::Html, launcher::Dialect::Xhtml})
        require(launcher::withRepairedBlanks({text, dialect}, {text, dialect}, {}) == text,
                "its own blanks stay");
    for (const auto output : {launcher::Output::Html, launcher::Output::Xhtml, launcher::Output::Xml}) {
        for (const bool xml : {false, true}) {
            launcher::RunOptions options;
            options.inputXml = xml;
            options.output = output;
            const launcher::Conversion conversion(text, options);
            (void)conversion.finished(tidied);
            (void)conversion.finished(conversion.forTidy());
            (void)conversion.told(tidied);
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    const QByteArray standing = QByteArray::fromStdString(input.ConsumeRandomLengthString(2000));
    const QByteArray perRun = QByteArray::fromStdString(input.ConsumeRandomLengthString(500));
    const QByteArray text = QByteArray::fromStdString(input.ConsumeRemainingBytesAsString());
    checkConfiguration(standing, perRun, text);
    checkStandingOptions(standing);
    checkConversion(text, standing);
    for (const tidy::Message &message : tidy::messagesIn(standing))
        require(message.line >= 0 && (message.line > 0 || message.column == 0), "a place is one or none");
    return 0;
}
