#include "Number.h"

#include "Failure.h"

#include <charconv>
#include <limits>

namespace
{

std::int64_t NumberBetween(std::int64_t iLeast, std::int64_t iMost, const std::string& iName,
                           const std::string& iText)
{
    std::int64_t number = 0;
    const char* const end = iText.data() + iText.size();
    const std::from_chars_result read = std::from_chars(iText.data(), end, number);
    if (read.ec == std::errc::invalid_argument || read.ptr != end)
        throw UsageError(iName + " is '" + iText + "', which is not a whole number");
    if (read.ec != std::errc() || number < iLeast || number > iMost)
        throw UsageError(iName + " is " + iText + ", which does not fit 32 bits: it must be from " +
                         std::to_string(iLeast) + " to " + std::to_string(iMost));
    return number;
}

using Signed = std::numeric_limits<std::int32_t>;
using Unsigned = std::numeric_limits<std::uint32_t>;

} // namespace

std::int32_t WholeNumber(const std::string& iName, const std::string& iText)
{
    return static_cast<std::int32_t>(NumberBetween(Signed::min(), Signed::max(), iName, iText));
}

std::uint32_t UnsignedNumber(const std::string& iName, const std::string& iText)
{
    return static_cast<std::uint32_t>(NumberBetween(Signed::min(), Unsigned::max(), iName, iText));
}
