#include "document_maker.h"

#include <QList>

#include <algorithm>

namespace bench {

namespace {

constexpr qsizetype longLine = 5'000'000;
constexpr int levels = 2'000;
constexpr int deepest = 100'000;

QByteArray start() { return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<catalogue>\n"; }

QByteArray record(int number)
{
    const QByteArray n = QByteArray::number(number);
    return "  <book id=\"bk" + n
        + "\" lang=\"en\">\n"
          "    <author>Gambardella, Matthew "
        + QByteArray::number(number * 7LL)
        + "</author>\n"
          "    <title>Developer&apos;s guide, volume "
        + n
        + "</title>\n"
          "    <price currency='EUR'>"
        + QByteArray::number(number % 97)
        + ".95</price>\n"
          "    <!-- shelf "
        + QByteArray::number(number % 13)
        + " -->\n"
          "    <description>An in-depth look at creating applications\n"
          "      with <em>markup</em>, for readers of all ages.</description>\n"
          "  </book>\n";
}

// The same without the blanks and line ends between and before things.
QByteArray flatRecord(int number)
{
    QByteArray flat;
    for (const QByteArray &line : record(number).split('\n'))
        flat += line.trimmed();
    return flat;
}

QByteArray sibling(int number)
{
    return "<item id=\"" + QByteArray::number(number) + "\">one of very many small things</item>\n";
}

QByteArray chain(int depth)
{
    QByteArray text;
    for (int level = 0; level < depth; ++level)
        text += "<part>words at a level\n";
    for (int level = 0; level < depth; ++level)
        text += "</part>\n";
    return text;
}

QByteArray fewLevels(int) { return chain(levels); }

// By turns an element with a long line of text and one with a long attribute.
QByteArray line(int number)
{
    QByteArray words;
    for (int word = 0; words.size() < longLine; ++word)
        words += "word " + QByteArray::number(word) + ", ";
    return number % 2 == 1 ? "<text>" + words + "</text>\n" : "<held words=\"" + words + "\"/>\n";
}

QByteArray repeated(qsizetype bytes, QByteArray text, QByteArray (*part)(int))
{
    text.reserve(bytes + 1000);
    for (int number = 1; text.size() < bytes; ++number)
        text += part(number);
    text += "</catalogue>\n";
    text.squeeze();
    return text;
}

QByteArray makeCatalogue(qsizetype bytes) { return repeated(bytes, start(), record); }
QByteArray makeOneLine(qsizetype bytes) { return repeated(bytes, "<catalogue>", flatRecord); }
QByteArray makeLongLines(qsizetype bytes) { return repeated(bytes, start(), line); }
QByteArray makeWide(qsizetype bytes) { return repeated(bytes, start(), sibling); }

QByteArray makeDeep(qsizetype bytes)
{
    const int depth = int(std::min<qsizetype>(deepest, bytes / 40));
    return repeated(bytes, start() + chain(depth), fewLevels);
}

constexpr Shape all[] = {
    {"catalogue", "records of a few lines", makeCatalogue, "author", 1, 0},
    {"one-line", "the same records, all in one line", makeOneLine, "author", 10, 5},
    {"long-lines", "lines of 5 MB, texts and attributes", makeLongLines, "word", 10, 5},
    {"deep", "2,000 levels again and again, and 100,000 once", makeDeep, "words", 10, 0},
    {"wide", "small siblings below one root", makeWide, "many", 10, 0},
};

} // namespace

std::span<const Shape> shapes() { return all; }

const Shape *shapeNamed(const QString &name)
{
    const auto *found = std::find_if(std::begin(all), std::end(all), [&](const Shape &shape) {
        return name == QLatin1StringView(shape.name);
    });
    return found == std::end(all) ? nullptr : found;
}

} // namespace bench
