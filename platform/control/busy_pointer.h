// The busy pointer over work on so much text that somebody could wonder.
#pragma once

#include "platform/busy_pointer.h"

namespace control {

class BusyPointer : public platform::BusyPointer
{
public:
    // Bytes that the work is about.
    explicit BusyPointer(long bytes) : platform::BusyPointer(bytes > muchText) { }

private:
    static constexpr long muchText = 4L * 1024 * 1024;
};

} // namespace control
