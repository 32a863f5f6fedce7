#include "yardsticks.h"

#include "measure.h"
#include "report.h"

#include "platform/control/scintilla.h"

#include <QFile>
#include <QStringList>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <cstring>
#include <iterator>
#include <vector>
#ifdef __unix__
#include <unistd.h>
#endif

namespace bench {

namespace {

constexpr qsizetype mostBuilt = 200'000'000; // bytes: a tree takes many times the memory of its text
constexpr int parseOptions = XML_PARSE_HUGE | XML_PARSE_NONET;

void saxPass(const QByteArray &text)
{
    xmlSAXHandler none;
    std::memset(&none, 0, sizeof none);
    none.initialized = XML_SAX2_MAGIC;
    xmlParserCtxtPtr context = xmlCreateMemoryParserCtxt(text.constData(), int(text.size()));
    *context->sax = none;
    xmlCtxtUseOptions(context, parseOptions);
    xmlParseDocument(context);
    xmlFreeParserCtxt(context);
}

void domParse(const QByteArray &text)
{
    xmlFreeDoc(xmlReadMemory(text.constData(), int(text.size()), nullptr, nullptr, parseOptions));
}

void writePlainly(const QByteArray &text, const QString &path, bool flush)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return;
    file.write(text);
#ifdef __unix__
    if (flush)
        fsync(file.handle());
#endif
}

void loadBareScintilla(const QByteArray &text)
{
    QsciScintillaBase editor;
    editor.SendScintilla(QsciScintillaBase::SCI_SETCODEPAGE, int(QsciScintillaBase::SC_CP_UTF8));
    editor.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 0L);
    editor.SendScintilla(QsciScintillaBase::SCI_ADDTEXT, (unsigned long)(text.size()), text.constData());
}

} // namespace

namespace {

struct Named
{
    const char *name;
    double Yardsticks::*value;
};

constexpr Named all[] = {
    {"SAX pass", &Yardsticks::sax},
    {"DOM parse", &Yardsticks::dom},
    {"memory copy", &Yardsticks::copy},
    {"plain write", &Yardsticks::write},
    {"flushed write", &Yardsticks::durableWrite},
    {"bare Scintilla load", &Yardsticks::scintilla},
};

} // namespace

void printYardsticks(const Yardsticks &yardsticks, const Report &report)
{
    for (const Named &named : all)
        if (yardsticks.*named.value > 0)
            report.row(QStringLiteral("yardstick: ") + QLatin1StringView(named.name), yardsticks.*named.value,
                       "ms");
}

QByteArray toBytes(const Yardsticks &yardsticks)
{
    QByteArray out;
    for (const Named &named : all)
        out += QByteArray::number(yardsticks.*named.value, 'g', 17) + '\n';
    return out;
}

Yardsticks yardsticksFrom(const QByteArray &bytes)
{
    const QList<QByteArray> lines = bytes.split('\n');
    Yardsticks yardsticks;
    for (qsizetype i = 0; i < qsizetype(std::size(all)); ++i)
        yardsticks.*all[i].value = lines.value(i).toDouble();
    return yardsticks;
}

Yardsticks measureYardsticks(const QByteArray &text, const QString &scratchFile)
{
    const int runs = text.size() > 20'000'000 ? 2 : 5;
    Yardsticks yardsticks;
    yardsticks.sax = milliseconds([&] { saxPass(text); }, runs);
    if (text.size() <= mostBuilt)
        yardsticks.dom = milliseconds([&] { domParse(text); }, runs);
    std::vector<QByteArray> kept; // so that each copy takes memory of its own, as a serialised document does
    yardsticks.copy = milliseconds([&] { kept.emplace_back(text.constData(), text.size()); }, runs);
    kept.clear();
    yardsticks.write = milliseconds([&] { writePlainly(text, scratchFile, false); }, runs);
    QStringList written; // a save, too, has the old file beside the new one: pages used before cost less
    const auto writeAnew = [&] {
        written.append(scratchFile + QString::number(written.size()));
        writePlainly(text, written.last(), true);
    };
    yardsticks.durableWrite = milliseconds(writeAnew, runs);
    yardsticks.scintilla = milliseconds([&] { loadBareScintilla(text); }, runs);
    for (const QString &path : written << scratchFile)
        QFile::remove(path);
    return yardsticks;
}

} // namespace bench
