#pragma once

#include <array>
#include <cstdint>

// The octets of a fresh version 4 identifier (RFC 9562, section 5.4): 122 bits from the kernel, so
// that a forked child never repeats its parent. Waits while the kernel has no random bits yet, and
// ends the process when it refuses the call: nothing else would be unique.
std::array<std::uint8_t, 16> RandomUuid();
