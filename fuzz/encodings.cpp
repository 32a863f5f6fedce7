// Any bytes as a file: they become valid UTF-8, and the same bytes again, in whatever encoding they are read.
#include "fuzz/require.h"
#include "platform/files/encoding_fault.h"
#include "platform/files/text_encoding.h"

using fuzz::require;

namespace {

void comesBack(const files::DecodedText &text, const QByteArray &bytes)
{
    require(text.utf8.isValidUtf8(), "the text is UTF-8");
    require(!text.encoding.name.isEmpty(), "an encoding has a name");
    const auto again = files::encodeText(text.utf8, text.encoding);
    require(again.ok(), "what was read can be written");
    require(*again == bytes, "and is the same bytes");
    const auto fault = files::encodingFault(text.utf8, text.encoding);
    require(!fault || (fault->offset >= 0 && fault->offset <= text.utf8.size()), "a fault lies in the text");
}

// An edit anywhere can be written, or it is said why not; what was written can be read.
void survivesEdit(const files::DecodedText &text, qsizetype place)
{
    while (place < text.utf8.size() && (text.utf8[place] & 0xC0) == 0x80)
        ++place;
    const auto edited = files::encodeText(QByteArray(text.utf8).insert(place, 'x'), text.encoding);
    require(edited.ok() || !edited.reason().isEmpty(), "a refusal has a reason");
    if (edited)
        require(files::decodeText(*edited).utf8.isValidUtf8(), "what was written can be read");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = fuzz::bytesOfInput(data, size);
    const files::DecodedText text = files::decodeText(bytes);
    comesBack(text, bytes);
    survivesEdit(text, qsizetype(size > 0 ? data[size / 2] : 0) * text.utf8.size() / 256);
    for (const char *name : {"UTF-8", "UTF-16BE", "Shift_JIS", "ISO-2022-JP"})
        comesBack(*files::decodeTextAs(bytes, name), bytes);
    return 0;
}
