#pragma once

#include <cstdint>
#include <string>

// The whole number that an argument stands for. `iName` is the argument's name as the help gives
// it. Text that is no decimal number, or one beyond 32 bits, is a UsageError.
std::int32_t WholeNumber(const std::string& iName, const std::string& iText);

// The same for an unsigned number; a negative one stands for the unsigned number of the same bits.
std::uint32_t UnsignedNumber(const std::string& iName, const std::string& iText);
