#include "platform/dom/attribute_bound.h"

#include "platform/dom/markup_reader.h"

namespace dom {

namespace {

constexpr qsizetype smallestAttribute = 5; // of bytes: a blank, a name, a sign, two quotes
constexpr qsizetype smallestTag = mostAttributes * smallestAttribute;

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

// The next "<" at or behind from that no other follows for so long that its tag could have so many
// attributes; the end where there is none. Looks at few of the bytes between.
qsizetype nextLongTag(QByteArrayView text, qsizetype from)
{
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

} // namespace

std::optional<qsizetype> findTooManyAttributes(QByteArrayView utf8, bool isMarkup)
{
    Tags tags(utf8);
    for (qsizetype tag = nextLongTag(utf8, 0); tag < utf8.size(); tag = nextLongTag(utf8, tag + 1)) {
        const char kind = utf8[tag + 1];
        if (kind == '!' || kind == '?' || kind == '/')
            continue;
        if (countValues(utf8.sliced(tag)) > mostAttributes && (!isMarkup || tags.contain(utf8.data() + tag)))
            return tag;
    }
    return std::nullopt;
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
