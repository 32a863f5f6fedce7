// What a page has beyond XML: elements without content, and those whose text is no markup.
#include "platform/control/markup_scanner.h"
#include "platform/control/markup_styler.h"

#include <algorithm>
#include <utility>

namespace control {

namespace {

using Mode = MarkupMode;

// Of pages, by name.
constexpr std::pair<QByteArrayView, PageElement> pageElements[] = {
    {"area", PageElement::Void},   {"base", PageElement::Void},    {"basefont", PageElement::Void},
    {"br", PageElement::Void},     {"col", PageElement::Void},     {"embed", PageElement::Void},
    {"frame", PageElement::Void},  {"hr", PageElement::Void},      {"img", PageElement::Void},
    {"input", PageElement::Void},  {"isindex", PageElement::Void}, {"link", PageElement::Void},
    {"meta", PageElement::Void},   {"param", PageElement::Void},   {"source", PageElement::Void},
    {"track", PageElement::Void},  {"wbr", PageElement::Void},     {"script", PageElement::Script},
    {"style", PageElement::Style}, {"title", PageElement::Title},  {"textarea", PageElement::Textarea},
};
constexpr qsizetype longestPageElement = 8;

bool sameWord(QByteArrayView one, QByteArrayView other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

PageElement pageElement(QByteArrayView name)
{
    const auto *const found = std::find_if(std::begin(pageElements), std::end(pageElements),
                                           [name](const auto &row) { return sameWord(row.first, name); });
    return found == std::end(pageElements) ? PageElement::Usual : found->second;
}

QByteArrayView nameOf(PageElement element)
{
    return std::find_if(std::begin(pageElements), std::end(pageElements),
                        [element](const auto &row) { return row.second == element; })
        ->first;
}

} // namespace

// The names of pages' elements decide what follows, so they are read whole.
void MarkupStyler::readElementName()
{
    if (state_.element == PageElement::Unread) {
        qsizetype length = 0;
        while (at_ + length < end_ && isNameByte(text_[at_ + length]))
            ++length;
        if (!last_ && at_ + length == end_ && length <= longestPageElement)
            return;
        state_.element = pageElement(text_.sliced(at_, length));
    }
    readName(NameMarkup, Mode::StartTag);
}

void MarkupStyler::endStartTag()
{
    const PageElement element = state_.element;
    if (element == PageElement::Usual || element == PageElement::Void) {
        state_.element = PageElement::Usual;
        return leave(element == PageElement::Void ? -1 : 0, Mode::Text);
    }
    state_.mode = Mode::RawText;
    rawEnd_ = -1;
}

// Raw text ends with the end tag of its own element, wherever in the text that stands.
void MarkupStyler::findRawEnd()
{
    const QByteArrayView name = nameOf(state_.element);
    rawEnd_ = end_;
    rawEnds_ = false;
    for (qsizetype found = text_.first(end_).indexOf('<', at_); found >= 0;
         found = text_.first(end_).indexOf('<', found + 1)) {
        const QByteArrayView tag = text_.sliced(found, std::min(end_ - found, name.size() + 2));
        const bool begins
            = tag.size() < 2 || (tag[1] == '/' && sameWord(tag.sliced(2), name.first(tag.size() - 2)));
        const bool whole = begins && tag.size() == name.size() + 2;
        const qsizetype behind = found + tag.size();
        if (!begins || (whole && behind < end_ && isNameByte(text_[behind])))
            continue;
        rawEnds_ = whole && (behind < end_ || last_);
        if (rawEnds_ || !last_) {
            rawEnd_ = found;
            return;
        }
    }
}

void MarkupStyler::readRawText()
{
    if (rawEnd_ < at_)
        findRawEnd();
    if (state_.element == PageElement::Script || state_.element == PageElement::Style)
        readCode(rawEnd_);
    else
        readRawReferences();
    if (at_ < rawEnd_ || !rawEnds_ || state_.mode == Mode::RawReference)
        return;
    rawEnd_ = -1;
    state_.element = PageElement::Usual;
    leave(-std::exchange(state_.code, {}).braces, Mode::Text);
}

// Titles and what is typed into fields have references, and scripts have not.
void MarkupStyler::readRawReferences()
{
    const qsizetype reference = text_.sliced(at_, rawEnd_ - at_).indexOf('&');
    take(reference < 0 ? rawEnd_ : at_ + reference, TextMarkup);
    if (reference < 0)
        return;
    take(at_ + 1, ReferenceMarkup);
    state_.mode = Mode::RawReference;
}

void MarkupStyler::readCode(qsizetype end)
{
    CodeText code{text_, styles_, at_, end, !rawEnds_ && !last_};
    const auto read = state_.element == PageElement::Script ? readScript : readStyleSheet;
    while (code.at < end) {
        const qsizetype before = code.at;
        const CodeMode mode = state_.code.mode;
        const int braces = state_.code.braces;
        read(code, state_.code);
        if (const int opened = state_.code.braces - braces; opened != 0)
            leave(opened, Mode::RawText);
        if (code.at == before && state_.code.mode == mode)
            break;
    }
    at_ = code.at;
}

} // namespace control
