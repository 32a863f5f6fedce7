#include "tidy/launcher/xml_words.h"

#include "platform/dom/verdict.h"
#include "tidy/launcher/xml_pieces.h"

#include <QByteArrayList>
#include <QCryptographicHash>

#include <libxml/xmlreader.h>

#include <algorithm>
#include <deque>
#include <limits>
#include <memory>
#include <utility>

namespace launcher {

namespace {

using Reader = std::unique_ptr<xmlTextReader, decltype(&xmlFreeTextReader)>;

QByteArrayView bytes(const xmlChar *text) { return reinterpret_cast<const char *>(text); }

bool isBlank(QByteArrayView text) { return std::all_of(text.begin(), text.end(), isXmlBlank); }

// What an element holds. Only at its end is it known whether its blanks mean anything, so both ways of
// reading it are kept up to there.
class Content
{
public:
    explicit Content(bool preserved) : preserved_(preserved) { }

    bool isPreserved() const { return preserved_; }

    void addText(QByteArrayView text)
    {
        text_ += text;
        layout_ = layout_ && isBlank(text);
    }

    void add(QByteArrayView kind, QByteArrayView what)
    {
        endText();
        for (QCryptographicHash *hash : {&all_, &withoutLayout_}) {
            hash->addData(kind);
            hash->addData(what);
            hash->addData(QByteArrayView("\0", 1));
        }
    }

    void addElement(QByteArrayView digest)
    {
        add("<", digest);
        elements_ = true;
    }

    void addEntity(QByteArrayView name)
    {
        add("&", name);
        layout_ = false;
    }

    QByteArray digest()
    {
        endText();
        return elements_ && layout_ && !preserved_ ? withoutLayout_.result() : all_.result();
    }

private:
    void endText()
    {
        if (text_.isEmpty())
            return;
        const QByteArray text = std::exchange(text_, {});
        all_.addData(text);
        if (!isBlank(text))
            withoutLayout_.addData(text);
    }

    QCryptographicHash all_{QCryptographicHash::Sha1};
    QCryptographicHash withoutLayout_{QCryptographicHash::Sha1};
    QByteArray text_; // its latest, sections included
    bool preserved_;
    bool layout_ = true; // no text but blanks
    bool elements_ = false;
};

struct Tag
{
    QByteArray name;
    QByteArrayList attributes; // by name
    bool preserves = false;
};

Tag tagOf(xmlTextReader *node)
{
    Tag tag{bytes(xmlTextReaderConstName(node)).toByteArray(), {}, false};
    while (xmlTextReaderMoveToNextAttribute(node) == 1) {
        const QByteArray name = bytes(xmlTextReaderConstName(node)).toByteArray();
        const QByteArray value = bytes(xmlTextReaderConstValue(node)).toByteArray();
        tag.attributes << name + '=' + value;
        tag.preserves = tag.preserves || (name == "xml:space" && value == "preserve");
    }
    xmlTextReaderMoveToElement(node);
    std::sort(tag.attributes.begin(), tag.attributes.end());
    return tag;
}

class Words
{
public:
    explicit Words(bool withComments) : withComments_(withComments) { open_.emplace_back(Tag(), false); }

    void take(xmlTextReader *node)
    {
        const auto value = [node] { return bytes(xmlTextReaderConstValue(node)); };
        switch (xmlTextReaderNodeType(node)) {
        case XML_READER_TYPE_ELEMENT:
            return open(node);
        case XML_READER_TYPE_END_ELEMENT:
            return close();
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
        case XML_READER_TYPE_WHITESPACE:
        case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
            return open_.back().content.addText(value());
        case XML_READER_TYPE_ENTITY_REFERENCE:
            return open_.back().content.addEntity(bytes(xmlTextReaderConstName(node)));
        case XML_READER_TYPE_COMMENT:
            return withComments_ ? open_.back().content.add("!", value()) : void();
        case XML_READER_TYPE_PROCESSING_INSTRUCTION:
            open_.back().content.add("?", bytes(xmlTextReaderConstName(node)));
            return open_.back().content.add(" ", value());
        default:
            return;
        }
    }

    XmlWords done() { return {open_.front().content.digest(), elements_}; }

private:
    struct Open
    {
        Open(Tag its, bool preserved) : tag(std::move(its)), content(preserved) { }

        Tag tag;
        Content content;
    };

    void open(xmlTextReader *node)
    {
        const bool empty = xmlTextReaderIsEmptyElement(node) == 1;
        ++elements_;
        Tag tag = tagOf(node);
        const bool preserved = tag.preserves || open_.back().content.isPreserved();
        open_.emplace_back(std::move(tag), preserved);
        if (empty)
            close();
    }

    void close()
    {
        Open &ended = open_.back();
        const QByteArray digest
            = ended.tag.name + '\0' + ended.tag.attributes.join('\0') + '\0' + ended.content.digest();
        open_.pop_back();
        open_.back().content.addElement(digest);
    }

    std::deque<Open> open_; // the document itself first
    qint64 elements_ = 0;
    bool withComments_;
};

} // namespace

std::optional<XmlWords> wordsOf(const QByteArray &xml, bool withComments)
{
    constexpr int options
        = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_IGNORE_ENC;
    if (xml.size() > std::numeric_limits<int>::max())
        return std::nullopt;
    // The reader itself knows no bound for what entities amount to.
    if (xml.contains("<!ENTITY") && dom::checkWellFormed(xml))
        return std::nullopt;
    const Reader reader(xmlReaderForMemory(xml.constData(), int(xml.size()), nullptr, "UTF-8", options),
                        &xmlFreeTextReader);
    if (!reader)
        return std::nullopt;
    Words words(withComments);
    int more = 0;
    while ((more = xmlTextReaderRead(reader.get())) == 1)
        words.take(reader.get());
    return more == 0 ? std::optional(words.done()) : std::nullopt;
}

} // namespace launcher
