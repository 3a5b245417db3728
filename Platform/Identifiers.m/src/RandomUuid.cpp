#include "RandomUuid.h"

#include <cerrno>
#include <cstdlib>
#include <sys/random.h>

std::array<std::uint8_t, 16> RandomUuid()
{
    std::array<std::uint8_t, 16> octets;
    // Requests of up to 256 bytes come whole or, before the first bits, interrupted by a signal.
    while (getrandom(octets.data(), octets.size(), 0) != static_cast<ssize_t>(octets.size()))
        if (errno != EINTR)
            std::abort();
    octets[6] = static_cast<std::uint8_t>((octets[6] & 0x0f) | 0x40); // version 4
    octets[8] = static_cast<std::uint8_t>((octets[8] & 0x3f) | 0x80); // variant 10
    return octets;
}
