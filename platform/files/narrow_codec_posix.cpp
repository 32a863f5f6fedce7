// The encodings that the C library converts.
#include "platform/files/narrow_codec.h"

#include <cerrno>
#include <iconv.h>

namespace files {

namespace {

class Converter
{
public:
    Converter(const char *to, const char *from) : handle_(iconv_open(to, from)) { }
    ~Converter()
    {
        if (valid())
            iconv_close(handle_);
    }
    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    // NOLINTNEXTLINE(performance-no-int-to-ptr): how the library says that it knows no such conversion
    bool valid() const { return handle_ != iconv_t(-1); }

    // Appends what the bytes convert to and returns how many of them could be. Without bytes it appends
    // what ends the text.
    qsizetype convert(QByteArrayView bytes, QByteArray &out)
    {
        char *from = const_cast<char *>(bytes.data()); // iconv's signature; it does not write there
        size_t left = size_t(bytes.size());
        qsizetype used = out.size();
        for (qsizetype room = bytes.size() + 16;; room *= 2) {
            out.resize(used + room);
            char *to = out.data() + used;
            size_t toLeft = size_t(room);
            const size_t failed = iconv(handle_, from ? &from : nullptr, &left, &to, &toLeft);
            used = to - out.data();
            if (failed != size_t(-1) || errno != E2BIG)
                break;
        }
        out.resize(used);
        return bytes.size() - qsizetype(left);
    }

private:
    iconv_t handle_;
};

class SystemEncoder : public NarrowEncoder
{
public:
    explicit SystemEncoder(const char *name) : converter_(name, "UTF-8") { }

    bool valid() const { return converter_.valid(); }

    qsizetype encode(QByteArrayView utf8, QByteArray &out) override
    {
        return utf8.isEmpty() ? 0 : converter_.convert(utf8, out);
    }

    void finish(QByteArray &out) override { converter_.convert({}, out); }

private:
    Converter converter_;
};

class SystemDecoder : public NarrowDecoder
{
public:
    explicit SystemDecoder(const char *name) : converter_("UTF-8", name) { }

    bool valid() const { return converter_.valid(); }

    qsizetype decode(QByteArrayView bytes, QByteArray &out) override
    {
        return bytes.isEmpty() ? 0 : converter_.convert(bytes, out);
    }

private:
    Converter converter_;
};

} // namespace

std::unique_ptr<NarrowEncoder> systemEncoder(const char *systemName)
{
    auto encoder = std::make_unique<SystemEncoder>(systemName);
    if (!encoder->valid())
        return nullptr;
    return encoder;
}

std::unique_ptr<NarrowDecoder> systemDecoder(const char *systemName)
{
    auto decoder = std::make_unique<SystemDecoder>(systemName);
    if (!decoder->valid())
        return nullptr;
    return decoder;
}

std::optional<QByteArray> decodeBySystem(QByteArrayView bytes, const char *systemName)
{
    Converter converter("UTF-8", systemName);
    QByteArray utf8;
    if (!converter.valid())
        return std::nullopt;
    if (!bytes.isEmpty() && converter.convert(bytes, utf8) != bytes.size())
        return std::nullopt;
    converter.convert({}, utf8);
    return utf8;
}

} // namespace files
