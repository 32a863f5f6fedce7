#include "platform/control/matching_tag.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace control {

namespace {

constexpr qsizetype longestName = 1024;

// Behind a comment, CDATA section or script that began before the bytes do.
qsizetype behindOpen(QByteArrayView bytes, QByteArrayView opening, QByteArrayView closing)
{
    // Looks for the first, rare byte, which is quick.
    const std::string_view all(bytes.data(), size_t(bytes.size()));
    const auto close = qsizetype(all.find(std::string_view(closing.data(), size_t(closing.size()))));
    if (close < 0)
        return 0;
    const qsizetype open = bytes.first(close).indexOf(opening);
    return open >= 0 ? 0 : close + closing.size();
}

bool sameName(const MatchText &text, const Markup &one, const Markup &other)
{
    const QByteArrayView a = text.bytes.sliced(one.name.start, one.name.length);
    const QByteArrayView b = text.bytes.sliced(other.name.start, other.name.length);
    return a.compare(b, text.html ? Qt::CaseInsensitive : Qt::CaseSensitive) == 0;
}

// Counts tags of the one name only, so that a fault in another element does no harm.
class Pairing
{
public:
    Pairing(const MatchText &text, const Markup &tag) : text_(text), tag_(tag) { }

    // Whether this tag, met on the way from the caret's, is its partner.
    bool closes(const Markup &met)
    {
        if (met.kind != MarkupKind::StartTag && met.kind != MarkupKind::EndTag)
            return false;
        if (!sameName(text_, tag_, met))
            return false;
        depth_ += met.kind == tag_.kind ? 1 : -1;
        return depth_ == 0;
    }

private:
    const MatchText &text_;
    const Markup &tag_;
    int depth_ = 1;
};

// Reads again what stands before, so that the tags of all other names need not be kept.
std::optional<Markup> partnerBefore(const MatchText &text, const Markup &tag, MarkupScanner scanner)
{
    std::vector<Markup> before;
    for (std::optional<Markup> met = scanner.next(); met && met->whole.start < tag.whole.start;
         met = scanner.next())
        if (met->name.length == tag.name.length && met->kind != MarkupKind::EmptyTag
            && sameName(text, *met, tag))
            before.push_back(*met);
    Pairing pairing(text, tag);
    for (auto met = before.rbegin(); met != before.rend(); ++met)
        if (pairing.closes(*met))
            return *met;
    return std::nullopt;
}

std::optional<Markup> partnerAfter(const MatchText &text, const Markup &tag, MarkupScanner scanner)
{
    Pairing pairing(text, tag);
    while (const std::optional<Markup> met = scanner.next())
        if (pairing.closes(*met))
            return met;
    return std::nullopt;
}

} // namespace

qsizetype firstSafePosition(const MatchText &text)
{
    if (text.fromDocumentStart)
        return 0;
    const qsizetype safe
        = std::max(behindOpen(text.bytes, "<!--", "-->"), behindOpen(text.bytes, "<![CDATA[", "]]>"));
    if (!text.html)
        return safe;
    return std::max(
        {safe, behindOpen(text.bytes, "<script", "</script>"), behindOpen(text.bytes, "<style", "</style>")});
}

std::optional<TagMatch> matchTag(const MatchText &text, qsizetype caret)
{
    MarkupScanner scanner(text.bytes, text.html, firstSafePosition(text));
    const MarkupScanner fromStart = scanner;
    std::optional<Markup> found;
    MarkupScanner behindFound = scanner;
    while (const std::optional<Markup> met = scanner.next()) {
        if (met->whole.start > caret)
            break;
        found = met;
        behindFound = scanner;
        if (met->whole.end() > caret)
            break;
    }
    if (!found || !found->whole.touches(caret))
        return std::nullopt;
    TagMatch match{*found, std::nullopt};
    if (found->kind == MarkupKind::StartTag)
        match.partner = partnerAfter(text, *found, behindFound);
    else if (found->kind == MarkupKind::EndTag)
        match.partner = partnerBefore(text, *found, fromStart);
    return match;
}

bool nearTagName(QByteArrayView bytes, qsizetype caret)
{
    qsizetype start = caret;
    while (start > 0 && caret - start < longestName && isNameByte(bytes[start - 1]))
        --start;
    if (start == caret && (caret >= bytes.size() || !isNameByte(bytes[caret])))
        return false;
    if (start >= 1 && bytes[start - 1] == '<')
        return true;
    return start >= 2 && bytes[start - 1] == '/' && bytes[start - 2] == '<';
}

} // namespace control
