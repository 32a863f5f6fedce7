// The tags of an accepted text one after another, for questions that need no nodes.
#pragma once

#include <QByteArrayView>
#include <optional>

namespace dom {

class MarkupReader
{
public:
    struct Tag
    {
        enum Kind
        {
            Start,
            Empty,
            End
        };
        Kind kind;
        QByteArrayView text; // from "<" to ">"
    };

    explicit MarkupReader(QByteArrayView markup) : at_(markup.begin()), end_(markup.end()) { }

    // The next tag; nothing at the end. Comments, CDATA sections, instructions and document types are stepped
    // over.
    std::optional<Tag> nextTag();

private:
    const char *at_;
    const char *end_;
};

} // namespace dom
