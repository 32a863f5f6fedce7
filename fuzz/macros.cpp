// Any bytes as a macro, with and without a checksum that fits: taken or refused, and kept unchanged.
#include "fuzz/require.h"
#include "platform/control/macro.h"
#include "platform/control/macro_slots.h"

using namespace control;
using fuzz::require;

namespace {

// A fuzzer does not find it by chance.
QByteArray withChecksum(QByteArray bytes)
{
    quint32 sum = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    for (int place = 0; place < 4; ++place)
        bytes += char(~sum >> (8 * place));
    return bytes;
}

void checkMacro(const QByteArray &bytes)
{
    const auto macro = macroOf(bytes);
    MacroSlots slots;
    slots.setMacro(0, bytes);
    require(slots.macro(0).isEmpty() == (!macro || macro->isEmpty()), "a slot takes what is a macro");
    if (!macro || macro->isEmpty())
        return;
    const QByteArray kept = bytesOf(*macro);
    require(macroOf(kept) == macro, "a macro is kept");
    require(macroOf(kept + "behind") == macro, "it says itself where it ends");
    for (qsizetype size = 0; size < kept.size(); ++size)
        require(!macroOf(QByteArrayView(kept).first(size)), "cut off, it is none");
    for (qsizetype place = 0; place < kept.size(); ++place) {
        QByteArray damaged = kept;
        damaged[place] = char(damaged[place] ^ 4);
        require(!macroOf(damaged), "damaged, it is none");
    }
    for (const Step &step : *macro)
        require(step.times >= 1 && step.times <= mostRepeats, "a step is taken so and so often");
    require(strokesIn(withTextJoined(*macro)) == strokesIn(*macro), "joining keeps the strokes");
    plays(slots, *macro, 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = fuzz::bytesOfInput(data, size);
    checkMacro(bytes);
    checkMacro(withChecksum("XEM1" + bytes));
    return 0;
}
