#include "tidy/launcher/run_options.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace launcher {

namespace {

struct Setting
{
    QByteArray name;
    QByteArray value;
};

using Settings = QList<Setting>;

// What became of an option; an empty present name leaves it out.
struct Fate
{
    const char *name;
    const char *present;
};

constexpr Fate fates[] = {
    {"char-encoding", ""},
    {"drop-font-tags", ""},
    {"error-file", ""},
    {"gnu-emacs-file", ""},
    {"hide-endtags", "omit-optional-tags"},
    {"input-encoding", ""},
    {"language", ""},
    {"output-encoding", ""},
    {"output-file", ""},
    {"slide-style", ""},
    {"split", ""},
    {"write-back", ""},
};

// An encoding that Tidy writes as references, or in part; the others hold every character.
struct Narrow
{
    const char *encoding;
    Alphabet alphabet;
};

constexpr Narrow narrowEncodings[] = {
    {"ascii", Alphabet::Ascii}, {"latin0", Alphabet::Ascii},  {"latin1", Alphabet::Latin1},
    {"mac", Alphabet::Ascii},   {"win1252", Alphabet::Ascii}, {"ibm858", Alphabet::Ascii},
};

// Besides "bare", what leaves out or respells some of what a page shows.
constexpr const char *otherWords[] = {"ascii-chars", "gdoc", "show-body-only", "word-2000"};

struct OutputName
{
    const char *option;
    Output output;
};

// Later ones win when several are set, as they do in Tidy.
constexpr OutputName outputNames[] = {
    {"output-html", Output::Html},
    {"output-xml", Output::Xml},
    {"output-xhtml", Output::Xhtml},
};

bool isOutputName(const QByteArray &name)
{
    const auto is = [&](const OutputName &known) { return name == known.option; };
    return std::any_of(std::begin(outputNames), std::end(outputNames), is);
}

bool saysYes(const QByteArray &value)
{
    return !value.isEmpty() && QByteArrayView("yYtT1").contains(value.front());
}

const Setting *find(const Settings &settings, const char *name)
{
    const auto is = [name](const Setting &setting) { return setting.name == name; };
    const auto found = std::find_if(settings.begin(), settings.end(), is);
    return found == settings.end() ? nullptr : &*found;
}

bool isOn(const Settings &settings, const char *name)
{
    const Setting *setting = find(settings, name);
    return setting && saysYes(setting->value);
}

// One kind of output excludes the others, whichever file asked for them.
void set(Settings &settings, const Setting &setting)
{
    const bool newOutput = isOutputName(setting.name) && saysYes(setting.value);
    settings.removeIf([&](const Setting &earlier) {
        return earlier.name == setting.name || (newOutput && isOutputName(earlier.name));
    });
    settings << setting;
}

void setUnlessSaid(Settings &settings, const char *name, const char *value)
{
    if (!find(settings, name))
        settings << Setting{name, value};
}

// Lines that begin with a blank continue the one before; comments are left out.
QList<QByteArray> logicalLines(QByteArray file)
{
    QList<QByteArray> lines;
    for (const QByteArray &line : file.replace("\r\n", "\n").replace('\r', '\n').split('\n')) {
        const bool continues = line.startsWith(' ') || line.startsWith('\t');
        if (continues && !lines.isEmpty())
            lines.back() += ' ' + line.trimmed();
        else if (!line.isEmpty() && !line.startsWith('#') && !line.startsWith("//"))
            lines << line;
    }
    return lines;
}

// Tidy reads a name up to its first zero byte, so that one with more behind it would pass for another.
bool isName(QByteArrayView name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
    });
}

Settings settingsIn(const QList<QByteArray> &files)
{
    Settings settings;
    for (const QByteArray &file : files) {
        const QList<QByteArray> lines = logicalLines(file);
        for (const QByteArray &line : lines) {
            const qsizetype colon = line.indexOf(':');
            const QByteArray name = line.first(qMax(colon, 0)).trimmed().toLower();
            const QByteArray value = line.sliced(colon + 1).trimmed();
            if (isName(name) && !value.contains('\0'))
                set(settings, {name, value});
        }
    }
    return settings;
}

// The encoding of the output is what it is called itself, else what it and the input are called together.
Alphabet alphabetOf(const Settings &settings)
{
    for (const char *option : {"output-encoding", "char-encoding"}) {
        const Setting *setting = find(settings, option);
        if (!setting || setting->value.isEmpty())
            continue;
        for (const Narrow &narrow : narrowEncodings) {
            if (setting->value.toLower() == narrow.encoding)
                return narrow.alphabet;
        }
        return Alphabet::Unicode;
    }
    return Alphabet::Unicode;
}

Output outputOf(const Settings &settings)
{
    Output output = Output::AsInput;
    for (const OutputName &known : outputNames) {
        if (isOn(settings, known.option))
            output = known.output;
    }
    return output;
}

// The last line end is the exchange's own and says nothing of the text.
const char *lineEndOf(QByteArrayView input)
{
    const QByteArrayView text = input.endsWith("\r\n") ? input.chopped(2) : input;
    const qsizetype lf = text.indexOf('\n');
    if (lf >= 0)
        return lf > 0 && text[lf - 1] == '\r' ? "CRLF" : "LF";
    return text.contains('\r') ? "CR" : nullptr;
}

// Tidy takes a public identifier only within quotes.
void quoteDoctype(Settings &settings)
{
    static constexpr const char *words[] = {"omit", "html5", "auto", "strict", "loose", "transitional"};
    for (Setting &setting : settings) {
        const QByteArray value = setting.value.toLower();
        const bool word = std::find(std::begin(words), std::end(words), value) != std::end(words);
        if (setting.name == "doctype" && !value.isEmpty() && !word && !value.startsWith('"'))
            setting.value = '"' + setting.value.replace('"', "") + '"';
    }
}

void leaveOut(Settings &settings, const char *present)
{
    settings.removeIf([present](const Setting &setting) { return presentName(setting.name) == present; });
}

// What only HTML may be without: end tags, and references by number to what XML has no name for. A DTD could
// name it for XHTML; in XML Tidy never writes a body alone.
void keepParsable(Settings &settings, Output output)
{
    leaveOut(settings, "omit-optional-tags");
    if (output == Output::Xml) {
        leaveOut(settings, "numeric-entities");
        leaveOut(settings, "show-body-only");
    }
    setUnlessSaid(settings, "numeric-entities", "yes");
    setUnlessSaid(settings, "fix-bad-comments", "yes");
}

QByteArray lineEndSet(const Settings &settings)
{
    const Setting *newline = find(settings, "newline");
    const QByteArray word = newline ? newline->value.toUpper() : QByteArray();
    if (word == "CRLF")
        return "\r\n";
    return word == "CR" ? "\r" : word == "LF" ? "\n" : QByteArray();
}

// An empty value says nothing, and Tidy would take the next line for it.
QByteArray configurationOf(const Settings &settings)
{
    QByteArray lines;
    for (const Setting &setting : settings) {
        const std::optional<QByteArray> name = presentName(setting.name);
        if (name && !setting.value.isEmpty())
            lines += *name + ": " + setting.value + '\n';
    }
    return lines;
}

} // namespace

std::optional<QByteArray> presentName(const QByteArray &name)
{
    for (const Fate &fate : fates) {
        if (name == fate.name)
            return *fate.present ? std::optional<QByteArray>(fate.present) : std::nullopt;
    }
    return name;
}

RunOptions reconciledOptions(const QList<QByteArray> &files, QByteArrayView input)
{
    Settings settings = settingsIn(files);
    RunOptions options;
    options.alphabet = alphabetOf(settings);
    options.output = outputOf(settings);
    if (options.output == Output::Xml || options.output == Output::Xhtml)
        keepParsable(settings, options.output);
    setUnlessSaid(settings, "force-output", "yes");
    setUnlessSaid(settings, "indent-spaces", "2"); // Tidy forgets its own where a file of options was read
    if (const char *lineEnd = lineEndOf(input))
        setUnlessSaid(settings, "newline", lineEnd);
    quoteDoctype(settings);
    options.inputXml = isOn(settings, "input-xml");
    if (options.inputXml && options.output == Output::Html)
        set(settings, {"output-xml", "yes"}); // Tidy's tags are neither XML's nor HTML's then
    setUnlessSaid(settings, "literal-attributes", "yes"); // a blank in a value counts, and fields show it
    if (!options.inputXml) {
        setUnlessSaid(settings, "drop-empty-elements", "no"); // a style sheet may make pictures of them
        setUnlessSaid(settings, "repeated-attributes", "keep-first"); // as browsers do
    }
    options.keepsSections = !isOn(settings, "escape-cdata");
    options.keepsComments = !isOn(settings, "hide-comments");
    options.keepsWords = !isOn(settings, "bare");
    options.keepsPageWords = options.keepsWords
        && std::none_of(std::begin(otherWords), std::end(otherWords),
                        [&](const char *name) { return isOn(settings, name); });
    options.lineEnd = lineEndSet(settings);
    options.namedReferences = options.output == Output::Html && !isOn(settings, "numeric-entities");
    options.configuration = configurationOf(settings);
    return options;
}

} // namespace launcher
