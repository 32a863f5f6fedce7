#include "tidy/option_values.h"

#include "platform/files/file_helpers.h"
#include "platform/files/text_file.h"
#include "tidy/config_files.h"
#include "tidy/option_catalogue.h"

namespace tidy {

namespace {

struct SystemDefault
{
    const char *name;
    const char *value;
};

constexpr SystemDefault systemDefaults[] = {
    {"indent", "auto"},
    {"indent-spaces", "5"},
    {"force-output", "yes"},
    {"tidy-mark", "no"},
};

QString lineFor(int index, const QString &value)
{
    return optionCatalogue()[size_t(index)].nameText() + QStringLiteral(": ") + value;
}

} // namespace

OptionValues::OptionValues()
{
    for (int index = 0; index < int(optionCatalogue().size()); ++index)
        values_ << defaultValue(index);
}

OptionValues OptionValues::read(const QString &programFolder)
{
    OptionValues options;
    options.changed_ = files::nonEmptyLines(standingOptionsFile(programFolder));
    for (const QString &line : options.changed_)
        options.applyLine(line);
    return options;
}

QString OptionValues::value(int index) const { return isListed(index) ? values_.at(index) : QString(); }

bool OptionValues::isChanged(int index) const
{
    return isListed(index) && value(index) != defaultValue(index);
}

void OptionValues::apply(int index, const QString &value)
{
    if (!isListed(index) || values_.at(index) == value)
        return;
    remove(lineFor(index, values_.at(index)));
    if (value != defaultValue(index))
        changed_ << lineFor(index, value);
    values_[index] = value;
}

platform::Result<void> OptionValues::save(const QString &programFolder) const
{
    QString text;
    for (const QString &line : changed_)
        text += line + QStringLiteral("\r\n");
    return files::writeTextFile(standingOptionsFile(programFolder), text.toUtf8());
}

platform::Result<void> OptionValues::loadDefault(const QString &programFolder)
{
    *this = OptionValues();
    QStringList lines;
    for (const SystemDefault &set : systemDefaults) {
        const int index = findOption(QString::fromLatin1(set.name));
        values_[index] = QString::fromLatin1(set.value);
        lines << lineFor(index, values_.at(index));
    }
    return files::writeTextFile(standingOptionsFile(programFolder),
                                lines.join(QStringLiteral("\r\n")).toUtf8());
}

// One character after the colon, the blank, is no part of the value, whatever it is.
void OptionValues::applyLine(const QString &line)
{
    const qsizetype colon = line.indexOf(QLatin1Char(':'));
    if (colon < 0 || colon + 2 > line.size())
        return;
    const int index = findOption(line.first(colon));
    if (isListed(index))
        values_[index] = line.sliced(colon + 2);
}

void OptionValues::remove(const QString &line)
{
    for (qsizetype at = 0; at < changed_.size(); ++at) {
        if (changed_.at(at).compare(line, Qt::CaseInsensitive) == 0) {
            changed_.removeAt(at);
            return;
        }
    }
}

} // namespace tidy
