#include "tree/node_clipboard.h"

#include "platform/dom/layout.h"

#include <QRegularExpression>
#include <algorithm>

namespace tree {

using platform::Failure;
using platform::Result;

namespace {

// Something that can only be meant as markup, whole or broken, unlike "a < b" and "for (i=0; i<n; i++)": it
// begins with a tag or the like, or holds a complete one.
bool looksLikeMarkup(const QString &text)
{
    static const QRegularExpression sign(
        QStringLiteral(R"(\A\s*<(?:[^\W\d]|[:/!?]))"
                       R"(|<(?:!--|!\[CDATA\[|\?[^\W\d]|/?[^\W\d][\w:.-]*+)"
                       R"((?:\s++[\w:.-]++(?:\s*+=\s*+(?:"[^"]*+"|'[^']*+'|[^\s"'<>=]++))?+)*+\s*+/?>))"),
        QRegularExpression::UseUnicodePropertiesOption);
    return sign.match(text).hasMatch();
}

// A whole document, which says so itself.
bool isDocument(const QString &markup)
{
    static const QRegularExpression prolog(
        QStringLiteral(R"(\A(?:<\?xml\s|(?:(?:<!--.*?-->|<\?.*?\?>)\s*+)*+<!DOCTYPE\s))"),
        QRegularExpression::DotMatchesEverythingOption);
    return prolog.match(markup).hasMatch();
}

// Comments and instructions beside a document's element.
bool hasMoreAtTop(const dom::Document &document)
{
    for (const dom::Node *node = document.documentNode()->firstChild(); node; node = node->nextSibling()) {
        const bool isInstruction
            = node->kind() == dom::NodeKind::ProcessingInstruction && node->name() != QStringLiteral("xml");
        if (isInstruction || node->kind() == dom::NodeKind::Comment)
            return true;
    }
    return false;
}

Failure refusal(const QString &reason) { return {QStringLiteral("Not pasted: %1").arg(reason)}; }

} // namespace

QByteArray CopiedNode::asText() const
{
    if (!isElement || declarations.isEmpty())
        return markup;
    const auto nameEnd = std::find_if(markup.begin(), markup.end(),
                                      [](char c) { return QByteArrayView(" \t\r\n/>").contains(c); });
    return QByteArray(markup).insert(std::distance(markup.begin(), nameEnd), declarations);
}

QByteArray CopiedNode::asElement() const { return "<node" + declarations + '>' + markup + "</node>"; }

Result<void> NodeClipboard::copy(dom::Node *node)
{
    const auto copy = document_.cloneNode(node, true);
    if (!copy)
        return Failure{copy.reason()};
    copy_ = *copy;
    const bool isElement = node->kind() == dom::NodeKind::Element;
    const bool hasScope = isElement || node->kind() == dom::NodeKind::EntityReference;
    scope_ = hasScope ? scopeOf(node->parent()) : Scope();
    clipboard_.put({.markup = node->xml(),
                    .declarations = neededDeclarations(*node, scope_, document_.entities()),
                    .isElement = isElement});
    return {};
}

Result<PastedNodes> NodeClipboard::paste(const dom::Node &into)
{
    if (copy_ && clipboard_.holdsWhatWasPut()) {
        const auto copy = document_.cloneNode(copy_, true);
        return copy ? Result(PastedNodes{{*copy}, scope_, {}}) : Failure{copy.reason()};
    }
    const auto clip = clipboard_.read();
    if (!clip)
        return Failure{clip.reason()};
    if (clip->form == Clip::Form::Node)
        return fromElement(clip->text.toUtf8());
    if (clip->form == Clip::Form::Source || looksLikeMarkup(clip->text))
        return fromMarkup(clip->text, into);
    return fromText(clip->text);
}

Result<PastedNodes> NodeClipboard::fromElement(const QByteArray &element)
{
    const auto nodes = document_.importContent(element);
    if (!nodes)
        return refusal(nodes.reason());
    return PastedNodes{*nodes, scopeFrom(element), {}};
}

// As though it were typed into the element: what is declared there holds for it.
Result<PastedNodes> NodeClipboard::fromMarkup(const QString &markup, const dom::Node &into)
{
    const QString bare = markup.startsWith(QChar::ByteOrderMark) ? markup.sliced(1) : markup;
    if (const QString trimmed = bare.trimmed(); isDocument(trimmed))
        return fromDocument(trimmed);
    const QByteArray name = into.name().toUtf8();
    const QByteArray space = dom::Layout::keepsBlanks(into) ? " xml:space=\"preserve\"" : "";
    const auto nodes = document_.importContent('<' + name + declarationsOf(scopeOf(&into)) + space + '>'
                                               + bare.toUtf8() + "</" + name + '>');
    if (!nodes)
        return refusal(nodes.reason());
    return PastedNodes{*nodes, {}, {}};
}

Result<PastedNodes> NodeClipboard::fromDocument(const QString &text)
{
    dom::Document whole;
    if (const auto error = whole.load(text.toUtf8()))
        return refusal(error->reason.simplified());
    auto pasted = fromElement("<x>" + whole.documentElement()->xml() + "</x>");
    if (pasted && hasMoreAtTop(whole))
        (*pasted).note = QStringLiteral("The document's element was pasted, not what stands around it");
    return pasted;
}

Result<PastedNodes> NodeClipboard::fromText(const QString &text)
{
    const auto node = document_.createTextNode(text);
    if (!node)
        return refusal(node.reason());
    return PastedNodes{{*node}, {}, {}};
}

} // namespace tree
