#include "platform/browser/source_tree.h"

#include <libxml/xmlreader.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace browser {
namespace {

constexpr int kMostNodes = 60'000; // shown; the engine lays these out within a second or two
constexpr int kDeepest = 400; // levels; the engine's own pages break down over some thousands

// What the engine draws itself, wherever in a document it stands.
constexpr const char *kDrawn[]
    = {"http://www.w3.org/1999/xhtml", "http://www.w3.org/2000/svg", "http://www.w3.org/1998/Math/MathML"};

// What is far away from what can be seen is not laid out.
constexpr const char kStart[]
    = "<!DOCTYPE html><meta charset=\"utf-8\"><meta name=\"color-scheme\" content=\"light dark\">"
      "<title>Preview</title><style>body{font:1em monospace;margin:1em;overflow-wrap:anywhere}"
      "details>*:not(summary),details>details{margin-left:1.5em}"
      "details,div{content-visibility:auto;contain-intrinsic-size:auto 1.3em}"
      "div{margin-left:1.1em;white-space:pre-wrap}summary{cursor:default}"
      "b{font-weight:normal;color:#881280}i{font-style:normal;color:#994500}u{text-decoration:none;color:#"
      "1a1aa6}"
      "s{text-decoration:none;color:#236e25}"
      "@media(prefers-color-scheme:dark){b{color:#e38bdc}i{color:#f0a868}u{color:#9fb4ff}s{color:#7fd48a}}"
      "</style>";

using Reader = std::unique_ptr<xmlTextReader, decltype(&xmlFreeTextReader)>;

QByteArray escaped(const xmlChar *text)
{
    QByteArray bytes(reinterpret_cast<const char *>(text));
    return bytes.replace('&', "&amp;").replace('<', "&lt;").replace('"', "&quot;");
}

QByteArray line(const QByteArray &content) { return "<div>" + content + "</div>"; }

QByteArray coloured(const QByteArray &content) { return line("<s>" + content + "</s>"); }

// The page while it is made.
class Tree
{
public:
    // False once there is no more to be shown.
    bool take(xmlTextReader *node)
    {
        switch (xmlTextReaderNodeType(node)) {
        case XML_READER_TYPE_ELEMENT:
            open(node);
            break;
        case XML_READER_TYPE_END_ELEMENT:
            close("<b>&lt;/" + escaped(xmlTextReaderConstName(node)) + "></b>");
            return true;
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
            if (!opened_.isEmpty() && text_.isEmpty()) {
                text_ = escaped(xmlTextReaderConstValue(node));
                return true;
            }
            flush();
            page_ += line(escaped(xmlTextReaderConstValue(node)));
            break;
        case XML_READER_TYPE_ENTITY_REFERENCE:
            flush();
            page_ += line("&amp;" + escaped(xmlTextReaderConstName(node)) + ';');
            break;
        case XML_READER_TYPE_COMMENT:
            flush();
            page_ += coloured("&lt;!--" + escaped(xmlTextReaderConstValue(node)) + "-->");
            break;
        case XML_READER_TYPE_PROCESSING_INSTRUCTION:
            flush();
            page_ += coloured(
                "&lt;?" + escaped(xmlTextReaderConstName(node)) + ' '
                + (xmlTextReaderConstValue(node) ? escaped(xmlTextReaderConstValue(node)) : QByteArray())
                + "?>");
            break;
        default:
            return true;
        }
        if (++nodes_ < kMostNodes && depth_ < kDeepest)
            return true;
        flush();
        return false;
    }

    QByteArray whole() const { return kStart + page_; }

    // The elements that are open are closed by the page's end.
    QByteArray beginning(const QByteArray &link) const
    {
        return kStart
            + line("This is the beginning of a large document. <a href=\"" + link
                   + "\">Show all of it</a>, which takes long.")
            + page_;
    }

private:
    void open(xmlTextReader *node)
    {
        flush();
        const bool empty = xmlTextReaderIsEmptyElement(node) == 1;
        QByteArray tag = "<b>&lt;" + escaped(xmlTextReaderConstName(node)) + "</b>";
        while (xmlTextReaderMoveToNextAttribute(node) == 1)
            tag += " <i>" + escaped(xmlTextReaderConstName(node)) + "</i>=\"<u>"
                + escaped(xmlTextReaderConstValue(node)) + "</u>\"";
        xmlTextReaderMoveToElement(node);
        if (empty) {
            page_ += line(tag + "<b>/></b>");
            return;
        }
        opened_ = tag + "<b>></b>";
        ++depth_;
    }

    // What holds a text alone stands in one line.
    void close(const QByteArray &tag)
    {
        page_ += opened_.isEmpty() ? tag + "</details>" : line(opened_ + text_ + tag);
        opened_.clear();
        text_.clear();
        --depth_;
    }

    void flush()
    {
        if (opened_.isEmpty())
            return;
        page_ += "<details open><summary>" + opened_ + "</summary>";
        if (!text_.isEmpty())
            page_ += line(text_);
        opened_.clear();
        text_.clear();
    }

    QByteArray opened_; // the start tag that nothing but text_ has followed yet
    QByteArray text_;

    QByteArray page_;
    int nodes_ = 0;
    int depth_ = 0;
};

} // namespace

std::optional<QByteArray> sourceTree(const QByteArray &xml, const QByteArray &whole)
{
    constexpr int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const bool drawn = std::any_of(std::begin(kDrawn), std::end(kDrawn),
                                   [&xml](const char *space) { return xml.contains(space); });
    if (drawn || xml.contains('\0') || xml.size() > std::numeric_limits<int>::max())
        return {};
    const Reader reader(xmlReaderForMemory(xml.constData(), int(xml.size()), nullptr, nullptr, options),
                        &xmlFreeTextReader);
    if (!reader)
        return {};
    Tree tree;
    bool complete = true;
    int more = 0;
    while ((more = xmlTextReaderRead(reader.get())) == 1)
        complete = complete && tree.take(reader.get());
    if (more != 0)
        return {};
    return complete ? tree.whole() : tree.beginning(whole);
}

} // namespace browser
