// What must hold for every input. A target that finds otherwise says so and stops, which libFuzzer reports.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

inline void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "Not so: %s\n", what);
    std::abort();
}

// The input in memory of exactly its own size, so that reading beyond it is seen.
inline QByteArray bytesOfInput(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

} // namespace fuzz

// What every target defines.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
