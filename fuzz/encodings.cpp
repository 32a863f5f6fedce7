// Any bytes as a file: they become valid UTF-8, and the same bytes again where nothing was noted.
#include "fuzz/require.h"
#include "platform/files/text_encoding.h"

using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = fuzz::bytesOfInput(data, size);
    const files::DecodedText text = files::decodeText(bytes);
    require(text.utf8.isValidUtf8(), "the text is UTF-8");
    require(!text.encoding.name.isEmpty(), "an encoding has a name");
    const auto again = files::encodeText(text.utf8, text.encoding);
    if (text.note.isEmpty()) {
        require(again.ok(), "what was read can be written");
        require(*again == bytes, "and is the same bytes");
    }
    if (again)
        require(files::decodeText(*again).utf8.isValidUtf8(), "what was written can be read");
    return 0;
}
