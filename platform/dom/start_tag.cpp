#include "platform/dom/start_tag.h"

#include "platform/dom/names.h"

#include <algorithm>

namespace dom {

namespace {

bool endsName(char c) { return isBlank(c) || c == '=' || c == '>' || c == '/'; }

qsizetype skipName(QByteArrayView text, qsizetype at)
{
    while (at < text.size() && !endsName(text[at]))
        ++at;
    return at;
}

QByteArray replaced(QByteArrayView raw, qsizetype from, qsizetype to, QByteArrayView by)
{
    QByteArray out = raw.first(from).toByteArray();
    out += by;
    out += raw.sliced(to);
    return out;
}

} // namespace

QByteArrayView tagName(QByteArrayView startTag) { return startTag.sliced(1, skipName(startTag, 1) - 1); }

StartTag::StartTag(QByteArrayView raw) : raw_(raw)
{
    nameEnd_ = skipName(raw, 1);
    qsizetype at = nameEnd_;
    while (at < raw.size()) {
        AttributeSpan attribute{at, skipBlanks(raw, at), 0, 0, 0};
        attribute.nameEnd = skipName(raw, attribute.name);
        const qsizetype quote = skipBlanks(raw, skipBlanks(raw, attribute.nameEnd) + 1);
        if (attribute.nameEnd == attribute.name || quote >= raw.size())
            return; // "/>" or ">"
        attribute.value = quote + 1;
        attribute.valueEnd = raw.indexOf(raw[quote], attribute.value);
        if (attribute.valueEnd < 0)
            return;
        at = attribute.valueEnd + 1;
        attributes_.push_back(attribute);
    }
}

QByteArrayView StartTag::nameOf(const AttributeSpan &attribute) const
{
    return raw_.sliced(attribute.name, attribute.nameEnd - attribute.name);
}

QByteArrayView StartTag::valueOf(const AttributeSpan &attribute) const
{
    return raw_.sliced(attribute.value, attribute.valueEnd - attribute.value);
}

QByteArrayView StartTag::signOf(const AttributeSpan &attribute) const
{
    return raw_.sliced(attribute.nameEnd, attribute.value - 1 - attribute.nameEnd);
}

const StartTag::AttributeSpan *StartTag::find(QByteArrayView name) const
{
    for (const AttributeSpan &attribute : attributes_) {
        if (nameOf(attribute) == name)
            return &attribute;
    }
    return nullptr;
}

QByteArray StartTag::withValue(const AttributeSpan &attribute, const QByteArray &value) const
{
    return replaced(raw_, attribute.value, attribute.valueEnd, value);
}

QByteArrayView StartTag::leadOf(const AttributeSpan &attribute) const
{
    return raw_.sliced(attribute.lead, attribute.name - attribute.lead);
}

// A tag that has its attributes on lines of their own gets a new one on such a line too.
QByteArrayView StartTag::leadOfNew() const
{
    const QByteArrayView last = attributes_.empty() ? QByteArrayView() : leadOf(attributes_.back());
    return last.contains('\n') ? last : QByteArrayView(" ");
}

QByteArray StartTag::withAttribute(const QByteArray &name, const QByteArray &value) const
{
    const qsizetype at = attributes_.empty() ? nameEnd_ : attributes_.back().valueEnd + 1;
    return replaced(raw_, at, at, leadOfNew().toByteArray() + name + "=\"" + value + '"');
}

QByteArray StartTag::withAttributes(const std::vector<Spelled> &attributes) const
{
    std::vector<const AttributeSpan *> kept;
    for (const Spelled &attribute : attributes)
        if (attribute.was)
            kept.push_back(attribute.was);
    std::sort(kept.begin(), kept.end(), [](const auto *a, const auto *b) { return a->lead < b->lead; });
    QByteArray out;
    for (size_t i = 0; i < attributes.size(); ++i) {
        out += i < kept.size() ? leadOf(*kept[i]) : leadOfNew();
        out += attributes[i].text;
    }
    const qsizetype end = attributes_.empty() ? nameEnd_ : attributes_.back().valueEnd + 1;
    return replaced(raw_, nameEnd_, end, out);
}

QByteArray StartTag::without(const AttributeSpan &attribute) const
{
    return replaced(raw_, attribute.lead, attribute.valueEnd + 1, {});
}

QByteArray StartTag::withName(const QByteArray &name) const { return replaced(raw_, 1, nameEnd_, name); }

QByteArray StartTag::opened() const
{
    if (!closesItself())
        return raw_.toByteArray();
    qsizetype end = raw_.size() - 2;
    while (end > 1 && isBlank(raw_[end - 1]))
        --end;
    return raw_.first(end).toByteArray() + '>';
}

} // namespace dom
