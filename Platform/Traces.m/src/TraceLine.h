#pragma once

#include "ZORPSNTrace.h"

#include <ostream>
#include <streambuf>
#include <string_view>
#include <vector>

// Collects a line in memory that is kept for the next one; never writes by itself.
class TraceLine final : public ZORPSNTraceLigne, private std::streambuf
{
public:
    TraceLine();
    ~TraceLine() override;

    std::ostream& GetStream() override { return _Stream; }
    // What was collected; valid until the next character or Clear.
    std::string_view Text() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }
    void Clear();
    // Adds to the line as the stream does: not when the stream has failed, and it fails when there
    // is no memory.
    void Append(std::string_view iText);
    void AppendBlanks(std::size_t iCount);
    // Ends the line where its own end was lost to a lack of memory.
    void Complete();

private:
    int_type overflow(int_type iCharacter) override;
    std::streamsize xsputn(const char* iText, std::streamsize iCount) override;
    std::size_t Room() const { return static_cast<std::size_t>(epptr() - pptr()); }
    // Makes room for that many more characters.
    void Reserve(std::size_t iMore)
    {
        if (Room() < iMore)
            Grow(iMore);
    }
    void Grow(std::size_t iMore);
    // Whether the stream is well and there is room for that many more characters, or can be made.
    bool CanTake(std::size_t iMore)
    {
        return _Stream.good() && (Room() >= iMore || CanGrow(iMore));
    }
    bool CanGrow(std::size_t iMore);
    void Advance(std::size_t iCount);

    std::vector<char> _Room;
    std::ostream _Stream;
};
