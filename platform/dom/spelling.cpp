#include "platform/dom/spelling.h"

#include "platform/dom/characters.h"
#include "platform/dom/common_runs.h"
#include "platform/dom/names.h"

#include <algorithm>
#include <vector>

namespace dom {

namespace {

struct Escape
{
    char32_t character;
    const char *written;
};

constexpr Escape textEscapes[] = {{U'&', "&amp;"}, {U'<', "&lt;"}, {U'\r', "&#13;"}};
constexpr Escape attributeEscapes[]
    = {{U'&', "&amp;"}, {U'<', "&lt;"}, {U'\r', "&#13;"}, {U'\n', "&#10;"}, {U'\t', "&#9;"}};

// A value as it is written: item i is what the bytes from starts[i] to starts[i + 1] mean.
struct Written
{
    Value value;
    std::vector<quint32> starts;
};

class Reader
{
public:
    Reader(QByteArrayView raw, Place place, const Value &namesOf) : raw_(raw), place_(place)
    {
        written_.value.shareNames(namesOf);
    }

    Written run()
    {
        written_.value.items.reserve(size_t(raw_.size()));
        written_.starts.reserve(size_t(raw_.size()) + 1);
        while (at_ < raw_.size()) {
            written_.starts.push_back(quint32(at_));
            written_.value.items.push_back(next());
        }
        written_.starts.push_back(quint32(raw_.size()));
        return std::move(written_);
    }

private:
    char32_t next()
    {
        const char c = raw_[at_];
        if (c == '&' && place_ != Place::Verbatim)
            return reference();
        if (c == '\r') {
            at_ += at_ + 1 < raw_.size() && raw_[at_ + 1] == '\n' ? 2 : 1;
            return place_ == Place::Attribute ? U' ' : U'\n';
        }
        if (uchar(c) >= 0x80)
            return beyondAscii();
        ++at_;
        return place_ == Place::Attribute && isBlank(c) ? U' ' : char32_t(c);
    }

    char32_t reference()
    {
        const qsizetype semicolon = raw_.indexOf(';', at_);
        if (semicolon < 0) {
            ++at_;
            return U'&';
        }
        const QByteArrayView name = raw_.sliced(at_ + 1, semicolon - at_ - 1);
        at_ = semicolon + 1;
        const auto character = characterOf(name);
        return character ? *character : written_.value.reference(name.toByteArray());
    }

    char32_t beyondAscii()
    {
        const auto lead = uchar(raw_[at_]);
        const int size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        const QByteArrayView bytes = raw_.sliced(at_, qMin<qsizetype>(size, raw_.size() - at_));
        at_ += bytes.size();
        char32_t c = lead & (0xFF >> (size + 1));
        for (const char byte : bytes.sliced(1))
            c = (c << 6) | (uchar(byte) & 0x3F);
        return c;
    }

    QByteArrayView raw_;
    Place place_;
    Written written_;
    qsizetype at_ = 0;
};

class Writer
{
public:
    Writer(const Value &value, const Manner &manner, qsizetype expected) : value_(value), manner_(manner)
    {
        out_.reserve(expected);
    }

    // A carriage return that was a line end by itself is completed where a line feed would join it.
    void keep(QByteArrayView bytes)
    {
        if (out_.endsWith('\r') && bytes.startsWith('\n'))
            out_ += '\n';
        out_ += bytes;
    }

    void write(char32_t item)
    {
        if (Value::isReference(item))
            out_ += '&' + value_.nameOf(item) + ';';
        else if (manner_.place == Place::Attribute && item == char32_t(manner_.quote))
            out_ += manner_.quote == '"' ? "&quot;" : "&apos;";
        else if (const char *escaped = escape(item))
            out_ += escaped;
        else if (item == U'\n')
            keep(manner_.lineEnd);
        else if (item < 0x80)
            out_ += char(item);
        else
            out_ += textOf(item).toUtf8();
    }

    // In a text "]]>" ends nothing, and must not stand there.
    QByteArray done() { return manner_.place == Place::Text ? out_.replace("]]>", "]]&gt;") : out_; }

private:
    const char *escape(char32_t item) const
    {
        const auto in = [item](const auto &escapes) {
            const auto found = std::find_if(std::begin(escapes), std::end(escapes),
                                            [item](const Escape &row) { return row.character == item; });
            return found == std::end(escapes) ? nullptr : found->written;
        };
        return manner_.place == Place::Text     ? in(textEscapes)
            : manner_.place == Place::Attribute ? in(attributeEscapes)
                                                : nullptr;
    }

    const Value &value_;
    const Manner &manner_;
    QByteArray out_;
};

// One line feed for each line end that a person may have typed. A carriage return that the value had already
// is a character like any other.
std::u32string withLineFeeds(const std::u32string &wanted, const std::u32string &before, Place place)
{
    if (wanted.find(U'\r') == std::u32string::npos || before.find(U'\r') != std::u32string::npos
        || place == Place::Attribute)
        return wanted;
    std::u32string out;
    out.reserve(wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i) {
        const bool pairs = wanted[i] == U'\r' && i + 1 < wanted.size() && wanted[i + 1] == U'\n';
        if (wanted[i] == U'\r' && place == Place::Verbatim && !pairs)
            out += U'\n';
        else if (!pairs)
            out += wanted[i];
    }
    return out;
}

} // namespace

char32_t Value::reference(const QByteArray &name)
{
    qsizetype index = names_.indexOf(name);
    if (index < 0) {
        index = names_.size();
        names_.append(name);
    }
    return firstReference + char32_t(index);
}

void Value::append(QStringView text) { items += text.toString().toStdU32String(); }

Value valueOf(QByteArrayView raw, Place place) { return Reader(raw, place, {}).run().value; }

QByteArray respelled(QByteArrayView raw, const Value &wanted, const Manner &manner)
{
    const Written before = Reader(raw, manner.place, wanted).run();
    const std::u32string items = withLineFeeds(wanted.items, before.value.items, manner.place);
    Writer writer(wanted, manner, raw.size() + qsizetype(items.size()));
    size_t at = 0;
    const auto writeUntil = [&](size_t end) {
        while (at < end)
            writer.write(items[at++]);
    };
    for (const CommonRun &run : commonRuns(before.value.items, items)) {
        writeUntil(size_t(run.after));
        const quint32 from = before.starts[size_t(run.before)];
        writer.keep(raw.sliced(from, before.starts[size_t(run.before + run.length)] - from));
        at = size_t(run.after + run.length);
    }
    writeUntil(items.size());
    return writer.done();
}

QByteArray withReferencesKept(QByteArrayView text, const Manner &manner)
{
    const Written written = Reader(text, Place::Text, {}).run();
    Writer writer(written.value, manner, text.size());
    for (size_t i = 0; i < written.value.items.size(); ++i) {
        const quint32 from = written.starts[i];
        if (text[from] == '&')
            writer.keep(text.sliced(from, written.starts[i + 1] - from));
        else
            writer.write(written.value.items[i]);
    }
    return writer.done();
}

} // namespace dom
