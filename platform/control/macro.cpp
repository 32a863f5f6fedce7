#include "platform/control/macro.h"

#include "platform/control/editor_commands.h"

#include <QUtf8StringView>
#include <algorithm>

namespace control {

namespace {

// The bytes: the signature, the number of steps, the steps, a checksum over all before it. A step begins with
// its command times two, plus one when a count of repetitions follows; behind that, where the command is 0,
// the text and its length before it. Numbers are in groups of seven bits, the lowest first, the eighth bit
// set in all but the last; the checksum is CRC-32 in four bytes, the lowest first.
constexpr QByteArrayView signature = "XEM1";
constexpr qsizetype checksumSize = 4;
constexpr int mostNumberBytes = 5;

constexpr int firstPlayCommand = 214;
constexpr int lastPlayCommand = 223;

quint32 checksumOf(QByteArrayView bytes)
{
    quint32 sum = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

bool isTypable(QByteArrayView text)
{
    return !text.empty() && QUtf8StringView(text).isValidUtf8()
        && std::none_of(text.begin(), text.end(),
                        [](char c) { return (quint8(c) < 0x20 && c != '\n' && c != '\t') || c == 0x7F; });
}

bool isKeepable(const Step &step)
{
    if (step.times < 1 || step.times > mostRepeats)
        return false;
    return step.command == 0 ? isTypable(step.text) : standsInMacro(step.command) && step.text.isEmpty();
}

void putNumber(QByteArray &bytes, quint32 number)
{
    for (; number >= 0x80U; number >>= 7)
        bytes += char(0x80U | (number & 0x7FU));
    bytes += char(number);
}

void putStep(QByteArray &bytes, const Step &step)
{
    putNumber(bytes, quint32(step.command) * 2 + (step.times > 1 ? 1 : 0));
    if (step.times > 1)
        putNumber(bytes, quint32(step.times));
    if (step.command == 0) {
        putNumber(bytes, quint32(step.text.size()));
        bytes += step.text;
    }
}

// Takes one piece after the other; nothing more once something was missing.
class Reader
{
public:
    explicit Reader(QByteArrayView bytes) : bytes_(bytes) { }

    bool failed() const { return failed_; }
    qsizetype at() const { return at_; }

    QByteArrayView take(qsizetype length)
    {
        failed_ = failed_ || length > bytes_.size() - at_;
        if (failed_)
            return {};
        at_ += length;
        return bytes_.sliced(at_ - length, length);
    }

    quint32 number()
    {
        quint64 value = 0;
        for (int group = 0; group < mostNumberBytes; ++group) {
            const QByteArrayView byte = take(1);
            if (byte.empty())
                return 0;
            value |= quint64(quint8(byte.front()) & 0x7FU) << (7 * group);
            if ((quint8(byte.front()) & 0x80U) == 0 && value <= 0x7FFFFFFFU)
                return quint32(value);
        }
        failed_ = true;
        return 0;
    }

    Step step()
    {
        const quint32 head = number();
        Step step{int(head >> 1), {}, 1};
        if ((head & 1U) != 0)
            step.times = int(number());
        if (step.command == 0)
            step.text = take(number()).toByteArray();
        failed_ = failed_ || !isKeepable(step);
        return step;
    }

private:
    QByteArrayView bytes_;
    qsizetype at_ = 0;
    bool failed_ = false;
};

} // namespace

bool opensWindow(int command)
{
    constexpr int windows[] = {168, 169, 178, 187, 212, 213, 224};
    return std::find(std::begin(windows), std::end(windows), command) != std::end(windows);
}

bool standsInMacro(int command)
{
    constexpr int undo = 100;
    constexpr int redo = 101;
    return findEditorCommand(command) != nullptr && !opensWindow(command) && command != undo
        && command != redo;
}

int slotPlayedBy(int command)
{
    return command < firstPlayCommand || command > lastPlayCommand ? -1 : command - firstPlayCommand;
}

qsizetype strokesIn(const Macro &macro)
{
    qsizetype strokes = 0;
    for (const Step &step : macro) {
        const auto begins = [](char c) { return (quint8(c) & 0xC0U) != 0x80U; };
        strokes += step.command != 0 ? 1 : std::count_if(step.text.begin(), step.text.end(), begins);
    }
    return strokes;
}

Macro withTextJoined(const Macro &macro)
{
    Macro joined;
    const auto isText = [](const Step &step) { return step.command == 0 && step.times == 1; };
    for (const Step &step : macro) {
        if (!joined.isEmpty() && isText(step) && isText(joined.last()))
            joined.last().text += step.text;
        else
            joined += step;
    }
    return joined;
}

QByteArray bytesOf(const Macro &macro)
{
    if (macro.isEmpty() || macro.size() > mostMacroSteps
        || !std::all_of(macro.begin(), macro.end(), isKeepable))
        return {};
    QByteArray bytes = signature.toByteArray();
    putNumber(bytes, quint32(macro.size()));
    for (const Step &step : macro) {
        putStep(bytes, step);
        if (bytes.size() > mostMacroBytes - checksumSize)
            return {};
    }
    const quint32 sum = checksumOf(bytes);
    for (int byte = 0; byte < checksumSize; ++byte)
        bytes += char(sum >> (8 * byte));
    return bytes;
}

std::optional<Macro> macroOf(QByteArrayView bytes)
{
    Reader reader(bytes);
    if (reader.take(signature.size()) != signature)
        return {};
    const quint32 count = reader.number();
    if (count == 0 || count > mostMacroSteps)
        return {};
    Macro macro;
    for (quint32 i = 0; i < count && !reader.failed(); ++i)
        macro += reader.step();
    const qsizetype end = reader.at();
    const QByteArrayView sum = reader.take(checksumSize);
    if (reader.failed() || end > mostMacroBytes - checksumSize)
        return {};
    quint32 kept = 0;
    for (int byte = 0; byte < checksumSize; ++byte)
        kept |= quint32(quint8(sum[byte])) << (8 * byte);
    if (kept != checksumOf(bytes.first(end)))
        return {};
    return macro;
}

} // namespace control
