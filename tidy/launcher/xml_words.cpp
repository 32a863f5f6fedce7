#include "tidy/launcher/xml_words.h"

#include "platform/dom/verdict.h"
#include "tidy/launcher/xml_pieces.h"

#include <QCryptographicHash>

#include <libxml/xmlreader.h>

#include <limits>
#include <memory>

namespace launcher {

namespace {

using Reader = std::unique_ptr<xmlTextReader, decltype(&xmlFreeTextReader)>;

QByteArray withoutBlanks(QByteArrayView text)
{
    QByteArray words;
    words.reserve(text.size());
    for (const char c : text) {
        if (!isXmlBlank(c))
            words += c;
    }
    return words;
}

QByteArrayView bytes(const xmlChar *text) { return reinterpret_cast<const char *>(text); }

void add(QCryptographicHash &hash, xmlTextReader *node)
{
    switch (xmlTextReaderNodeType(node)) {
    case XML_READER_TYPE_TEXT:
    case XML_READER_TYPE_CDATA:
        hash.addData(withoutBlanks(bytes(xmlTextReaderConstValue(node))));
        break;
    case XML_READER_TYPE_ENTITY_REFERENCE:
        hash.addData('&' + bytes(xmlTextReaderConstName(node)).toByteArray() + ';');
        break;
    default:
        break;
    }
}

} // namespace

std::optional<XmlWords> wordsOf(const QByteArray &xml)
{
    constexpr int options = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    if (xml.size() > std::numeric_limits<int>::max())
        return std::nullopt;
    // The reader itself knows no bound for what entities amount to.
    if (xml.contains("<!ENTITY") && dom::checkWellFormed(xml))
        return std::nullopt;
    const Reader reader(xmlReaderForMemory(xml.constData(), int(xml.size()), nullptr, "UTF-8", options),
                        &xmlFreeTextReader);
    if (!reader)
        return std::nullopt;
    QCryptographicHash hash(QCryptographicHash::Sha1);
    XmlWords words;
    int more = 0;
    while ((more = xmlTextReaderRead(reader.get())) == 1) {
        add(hash, reader.get());
        words.elements += xmlTextReaderNodeType(reader.get()) == XML_READER_TYPE_ELEMENT ? 1 : 0;
    }
    words.digest = hash.result();
    return more == 0 ? std::optional(words) : std::nullopt;
}

} // namespace launcher
