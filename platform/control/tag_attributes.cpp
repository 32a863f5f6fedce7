#include "platform/control/tag_attributes.h"

namespace control {

bool isBlankByte(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

void TagAttributes::skipBlanks()
{
    while (at_ < bytes_.size() && isBlankByte(bytes_[at_]))
        ++at_;
}

std::optional<TagAttribute> TagAttributes::next()
{
    while (at_ < bytes_.size() && !isNameByte(bytes_[at_]))
        ++at_;
    if (at_ == bytes_.size())
        return std::nullopt;
    TagAttribute found;
    found.name.start = at_;
    while (at_ < bytes_.size() && isNameByte(bytes_[at_]))
        ++at_;
    found.name.length = at_ - found.name.start;
    skipBlanks();
    if (at_ < bytes_.size() && bytes_[at_] == '=') {
        ++at_;
        skipBlanks();
        readValue(found);
    }
    return found;
}

void TagAttributes::readValue(TagAttribute &attribute)
{
    if (at_ == bytes_.size())
        return;
    const char quote = bytes_[at_];
    attribute.quoted = quote == '"' || quote == '\'';
    if (attribute.quoted)
        ++at_;
    attribute.value.start = at_;
    while (at_ < bytes_.size()
           && (attribute.quoted ? bytes_[at_] != quote : !isBlankByte(bytes_[at_]) && bytes_[at_] != '>'))
        ++at_;
    attribute.value.length = at_ - attribute.value.start;
    if (attribute.quoted && at_ < bytes_.size()) {
        attribute.closed = true;
        ++at_;
    }
}

} // namespace control
