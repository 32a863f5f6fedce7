// Where a fault lies that the parser came upon.
#include "platform/dom/judgement.h"

#include "platform/dom/markup_reader.h"
#include "platform/dom/names.h"
#include "platform/dom/start_tag.h"
#include "platform/dom/text_place.h"

#include <libxml/xmlerror.h>

namespace dom {

namespace {

// The place of the reference that ends at offset.
qsizetype referenceBefore(QByteArrayView text, qsizetype offset)
{
    if (offset == 0 || text[offset - 1] != ';')
        return offset;
    qsizetype at = offset - 1;
    while (at > 0 && text[at] != '&' && text[at] != '%' && !isBlank(text[at]))
        --at;
    return text[at] == '&' || text[at] == '%' ? at : offset;
}

QByteArrayView endTagName(QByteArrayView tag) { return tag.sliced(2).chopped(1).trimmed(); }

// The line of the start tag of the innermost element that is open at end and has this name. What lies between
// is well-formed but for that.
std::optional<qint64> lineOfOpenElement(QByteArrayView text, qsizetype begin, qsizetype end, const char *name)
{
    MarkupReader reader(text.sliced(begin, end - begin));
    std::vector<QByteArrayView> open;
    while (const auto tag = reader.nextTag()) {
        if (!tag->text.endsWith('>'))
            break;
        if (tag->kind == MarkupReader::Tag::Start)
            open.push_back(tag->text);
        else if (tag->kind == MarkupReader::Tag::End && !open.empty()
                 && tagName(open.back()) == endTagName(tag->text))
            open.pop_back();
    }
    if (open.empty() || tagName(open.back()) != QByteArrayView(name))
        return std::nullopt;
    return lineOf(text, open.back().data() - text.data());
}

} // namespace

// A fault in the value of an entity lies where that is referred to.
void Judgement::locate(xmlParserCtxtPtr context)
{
    fault_.offset = mainOffset();
    fault_.file = nullptr;
    if (isInDocumentItself(context))
        return;
    if (!readsSubset_)
        fault_.offset = referenceBefore(judged_, fault_.offset);
    const std::vector<EntityTrail::Step> &steps = trail_.comeTo(context);
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        if (locateIn(*step))
            return;
    }
}

bool Judgement::isInDocumentItself(xmlParserCtxtPtr context) const
{
    return context == context_.get() && !readsSubset_ && context->inputNr <= 1;
}

bool Judgement::locateIn(const EntityTrail::Step &step)
{
    const xmlParserCtxt &context = *step.context;
    for (int i = context.inputNr - 1; i >= 0; --i) {
        const char *at = asChars(context.inputTab[i]->cur);
        if (at >= judged_.cbegin() && at <= judged_.cend())
            return true;
        if (const EntityFile *file = files_.holding(at)) {
            fault_.file = file;
            fault_.fileOffset = at - file->judged.cbegin();
            return true;
        }
    }
    const EntityFile *file = fileReadBy(step);
    if (!file || context.inputNr == 0)
        return false;
    // The value of an entity is read from a copy.
    const xmlParserInput &input = *context.inputTab[0];
    fault_.file = file;
    fault_.fileOffset
        = qMin(file->judged.size(), file->content + qsizetype(input.consumed) + (input.cur - input.base));
    return true;
}

const EntityFile *Judgement::fileReadBy(const EntityTrail::Step &step) const
{
    for (const auto &[declared, substitute] : substitutes_) {
        if (&substitute.entity == step.reads)
            return substitute.file;
    }
    return nullptr;
}

// The library counts only the lines that end with LF.
std::optional<qint64> Judgement::openedAt(const xmlError &error) const
{
    if (error.code != XML_ERR_TAG_NAME_MISMATCH && error.code != XML_ERR_TAG_NOT_FINISHED)
        return std::nullopt;
    if (fault_.file)
        return lineOfOpenElement(fault_.file->judged, fault_.file->content, fault_.fileOffset, error.str1);
    return lineOfOpenElement(judged_, 0, fault_.offset, error.str1);
}

// Where in the document the parser stands: at the reference whose entity it reads, or at the document type.
qsizetype Judgement::mainOffset() const
{
    if (readsSubset_)
        return qMax(documentType_, qsizetype(0));
    const xmlParserInput *input = context_->inputNr > 0 ? context_->inputTab[0] : nullptr;
    const char *at = input ? asChars(input->cur) : judged_.cend();
    if (at < judged_.cbegin() || at > judged_.cend())
        return judged_.size();
    return at - judged_.cbegin();
}

} // namespace dom
