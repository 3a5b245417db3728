#include "Results.h"

#include "Failure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

namespace
{

void Check(bool iWritten)
{
    if (!iWritten)
        throw Failure(std::string("cannot write the results to standard output: ") +
                      std::strerror(errno));
}

} // namespace

void Results::Line(std::string_view iText)
{
    Bytes(iText);
    Check(std::fputc('\n', stdout) != EOF);
}

void Results::Bytes(std::string_view iBytes)
{
    Check(std::fwrite(iBytes.data(), 1, iBytes.size(), stdout) == iBytes.size());
}

void Results::Flush()
{
    Check(std::fflush(stdout) == 0);
}
