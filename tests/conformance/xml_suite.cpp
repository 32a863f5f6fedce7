#include "suite.h"

#include "platform/dom/verdict.h"
#include "platform/files/encoding_fault.h"
#include "platform/files/text_file.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>

namespace conformance {

namespace {

using Doc = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

QString taken(xmlChar *text)
{
    const QString string = QString::fromUtf8(reinterpret_cast<const char *>(text));
    xmlFree(text);
    return string;
}

QString attribute(xmlNode *element, const char *name)
{
    return taken(xmlGetProp(element, reinterpret_cast<const xmlChar *>(name)));
}

// The editions of XML 1.0 differ; the fifth is in force. Cases that leave it open what is right tell nothing,
// nor do those of parsers that know no namespaces.
bool counts(xmlNode *test)
{
    const QString edition = attribute(test, "EDITION");
    return attribute(test, "TYPE") != QLatin1String("error")
        && (edition.isEmpty() || edition.contains(QLatin1Char('5')))
        && attribute(test, "NAMESPACE") != QLatin1String("no");
}

bool isVersion11(xmlNode *test)
{
    return attribute(test, "VERSION") == QLatin1String("1.1")
        || attribute(test, "RECOMMENDATION").endsWith(QLatin1String("1.1"));
}

// The file's place; one folder of the suite has been moved since its catalogue was written.
QString pathOf(const QString &asNamed, const QDir &root)
{
    if (QFileInfo::exists(asNamed))
        return asNamed;
    const QString end = QLatin1Char('/') + asNamed.section(QLatin1Char('/'), -2);
    QDirIterator files(root.path(), {QFileInfo(asNamed).fileName()}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (path.endsWith(end))
            return path;
    }
    return asNamed;
}

Case caseOf(xmlNode *test, const QDir &root)
{
    const QString base = taken(xmlNodeGetBase(test->doc, test));
    Case one;
    one.id = attribute(test, "ID");
    one.path = pathOf(QDir::cleanPath(QFileInfo(base).dir().filePath(attribute(test, "URI"))), root);
    one.isRight = attribute(test, "TYPE") != QLatin1String("not-wf");
    one.group = QStringLiteral("XML %1, %2, %3")
                    .arg(isVersion11(test) ? QStringLiteral("1.1") : QStringLiteral("1.0"),
                         root.relativeFilePath(one.path).section(QLatin1Char('/'), 0, 0),
                         one.isRight ? QStringLiteral("well-formed") : QStringLiteral("not well-formed"));
    return one;
}

void collect(xmlNode *first, const QDir &root, std::vector<Case> &cases)
{
    for (xmlNode *node = first; node; node = node->next) {
        if (node->type != XML_ELEMENT_NODE)
            continue;
        if (xmlStrEqual(node->name, reinterpret_cast<const xmlChar *>("TEST")) && counts(node))
            cases.push_back(caseOf(node, root));
        collect(node->children, root, cases);
    }
}

// The parts of the suite may have catalogues of the same name below.
QString findCatalogue(const QString &folder)
{
    QString topmost;
    QDirIterator files(folder, {QStringLiteral("xmlconf.xml")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (topmost.isEmpty() || path.count(QLatin1Char('/')) < topmost.count(QLatin1Char('/')))
            topmost = path;
    }
    return topmost;
}

} // namespace

platform::Result<std::vector<Case>> readXmlSuite(const QString &folder)
{
    const QString catalogue = findCatalogue(folder);
    if (catalogue.isEmpty())
        return platform::Failure{QStringLiteral("There is no xmlconf.xml in %1 or below.").arg(folder)};
    const Doc doc(xmlReadFile(QFile::encodeName(catalogue).constData(), nullptr,
                              XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR),
                  xmlFreeDoc);
    if (!doc)
        return platform::Failure{QStringLiteral("%1 cannot be read.").arg(catalogue)};
    std::vector<Case> cases;
    collect(xmlDocGetRootElement(doc.get()), QFileInfo(catalogue).dir(), cases);
    return cases;
}

// As the program opens a document.
QString judgeXml(const Case &one)
{
    const auto file = files::readTextFile(one.path);
    if (!file)
        return file.reason();
    if (const auto fault = files::encodingFault(file->utf8, file->form.encoding))
        return fault->reason;
    const auto error = dom::checkWellFormed(file->utf8, QFileInfo(one.path).path());
    return error ? QStringLiteral("line %1: %2").arg(error->line).arg(error->reason.trimmed()) : QString();
}

} // namespace conformance
