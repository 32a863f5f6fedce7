// Walks the attributes of a tag, one being typed included.
#pragma once

#include "platform/control/markup_scanner.h"

namespace control {

struct TagAttribute
{
    Span name;
    // Without the quotes; of no length and at 0 when there is none.
    Span value;
    // Whether the value began with a quote, and whether it ended with one.
    bool quoted = false;
    bool closed = false;
};

class TagAttributes
{
public:
    // The bytes of a tag, or of its beginning, from behind its name. Positions are counted in these bytes.
    explicit TagAttributes(QByteArrayView bytes) : bytes_(bytes) { }

    // The next attribute; nothing at the end.
    std::optional<TagAttribute> next();

private:
    void skipBlanks();
    void readValue(TagAttribute &attribute);

    QByteArrayView bytes_;
    qsizetype at_ = 0;
};

// Blank, tab or line end.
bool isBlankByte(char c);

} // namespace control
