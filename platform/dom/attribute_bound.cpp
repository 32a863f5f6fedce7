#include "platform/dom/attribute_bound.h"

#include "platform/dom/markup_reader.h"
#include "platform/dom/names.h"
#include "platform/dom/start_tag.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace dom {

namespace {

constexpr qsizetype smallestAttribute = 5; // of bytes: a blank, a name, a sign, two quotes
constexpr qsizetype manyAttributes = 1000; // that are judged here, and not left to the parser

// The values in a tag that begins here, as many as it has attributes.
qsizetype countValues(QByteArrayView text)
{
    text = text.first(text.indexOf('<', 1) < 0 ? text.size() : text.indexOf('<', 1));
    qsizetype count = 0;
    for (qsizetype at = 1; at < text.size() && text[at] != '>'; ++at) {
        if (text[at] != '"' && text[at] != '\'')
            continue;
        at = text.indexOf(text[at], at + 1);
        if (at < 0)
            break;
        ++count;
    }
    return count;
}

// The next "<" at or behind from that no other follows for so long that its tag could have more attributes;
// the end where there is none. Looks at few of the bytes between.
qsizetype nextLongTag(QByteArrayView text, qsizetype from, qsizetype attributes)
{
    const qsizetype smallestTag = attributes * smallestAttribute;
    qsizetype tag = text.indexOf('<', from);
    while (tag >= 0 && text.size() - tag > smallestTag) {
        const qsizetype later = text.sliced(tag + 1, smallestTag).lastIndexOf('<');
        if (later < 0)
            return tag;
        tag += 1 + later;
    }
    return text.size();
}

// Tells which of ascending places in a document are tags, and not within a comment or the like.
class Tags
{
public:
    explicit Tags(QByteArrayView document) : reader_(document) { }

    bool contain(const char *place)
    {
        while (last_ < place) {
            const auto tag = reader_.nextTag();
            if (!tag)
                return false;
            last_ = tag->text.data();
        }
        return last_ == place;
    }

private:
    MarkupReader reader_;
    const char *last_ = nullptr;
};

// The places of start tags with more attributes, in order; of a document or of a piece of text.
class LongTags
{
public:
    LongTags(QByteArrayView text, bool isDocument, qsizetype attributes)
        : text_(text), tags_(text), isDocument_(isDocument), attributes_(attributes)
    { }

    std::optional<qsizetype> next()
    {
        while ((at_ = nextLongTag(text_, at_ + 1, attributes_)) < text_.size()) {
            const char kind = text_[at_ + 1];
            const bool isStart = kind != '!' && kind != '?' && kind != '/';
            if (isStart && countValues(text_.sliced(at_)) > attributes_
                && (!isDocument_ || tags_.contain(text_.data() + at_)))
                return at_;
        }
        return std::nullopt;
    }

private:
    QByteArrayView text_;
    Tags tags_;
    bool isDocument_;
    qsizetype attributes_;
    qsizetype at_ = -1;
};

// Whatever is declared around it: no reference, nothing of a namespace, no character that needs a second
// look.
bool isRightByItself(QByteArrayView name, QByteArrayView value)
{
    const auto isPlain
        = [](char c) { return (uchar(c) >= ' ' || isBlank(c)) && c != '<' && c != '&' && c != '\xEF'; };
    return name.isValidUtf8() && value.isValidUtf8() && name != "xmlns" && isNCName(QString::fromUtf8(name))
        && std::all_of(value.begin(), value.end(), isPlain);
}

bool standsApart(QByteArrayView tag, const StartTag::AttributeSpan &attribute)
{
    const char next = attribute.valueEnd + 1 < tag.size() ? tag[attribute.valueEnd + 1] : '\0';
    return attribute.name > attribute.lead && (isBlank(next) || next == '>' || next == '/');
}

void blankAttributes(QByteArray &text, qsizetype at)
{
    const auto tag = MarkupReader(QByteArrayView(text).sliced(at)).nextTag();
    if (!tag)
        return;
    const StartTag start(tag->text);
    QHash<QByteArray, int> uses;
    for (const StartTag::AttributeSpan &attribute : start.attributes())
        ++uses[start.nameOf(attribute).toByteArray()];
    std::vector<StartTag::AttributeSpan> blanked;
    for (const StartTag::AttributeSpan &attribute : start.attributes()) {
        const QByteArrayView name = start.nameOf(attribute);
        if (uses.value(name.toByteArray()) == 1 && standsApart(tag->text, attribute)
            && start.signOf(attribute).trimmed() == "=" && isRightByItself(name, start.valueOf(attribute)))
            blanked.push_back(attribute);
    }
    for (const StartTag::AttributeSpan &attribute : blanked)
        std::fill(text.begin() + at + attribute.name, text.begin() + at + attribute.valueEnd + 1, ' ');
}

} // namespace

std::optional<QByteArray> withFewerAttributes(QByteArrayView document)
{
    LongTags tags(document, true, manyAttributes);
    std::optional<qsizetype> tag = tags.next();
    if (!tag)
        return std::nullopt;
    QByteArray text = document.toByteArray();
    for (; tag; tag = tags.next())
        blankAttributes(text, *tag);
    return text;
}

std::optional<qsizetype> findTooManyAttributes(QByteArrayView utf8, bool isDocument)
{
    return LongTags(utf8, isDocument, mostAttributes).next();
}

Choice longestChoice(QByteArrayView declarations)
{
    constexpr QByteArrayView ends = "()<>\"'";
    Choice longest;
    Choice here;
    for (qsizetype at = 0; at < declarations.size(); ++at) {
        if (declarations[at] == '|')
            here = {here.count + 1, at};
        else if (ends.contains(declarations[at]))
            here = {};
        if (here.count > longest.count)
            longest = here;
    }
    return longest;
}

QString tooManyAttributes(const QString &who)
{
    return QStringLiteral("%1 more than %2 attributes, which is more than can be judged.")
        .arg(who)
        .arg(mostAttributes);
}

QString tooManyChoices()
{
    return QStringLiteral(
               "The list has more than %1 values to choose from, which is more than can be judged.")
        .arg(mostChoices);
}

} // namespace dom
