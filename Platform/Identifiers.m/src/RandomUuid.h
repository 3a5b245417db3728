#pragma once

#include <array>
#include <cstdint>

// The octets of a fresh version 4 identifier (RFC 9562, section 5.4): 122 bits from the kernel, so
// that a forked child never repeats its parent. Never fails: when the kernel has no random bits yet
// the call waits for them.
std::array<std::uint8_t, 16> RandomUuid();
