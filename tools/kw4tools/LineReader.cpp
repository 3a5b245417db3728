#include "LineReader.h"

#include "Failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

LineReader::LineReader(const std::string& iFile)
    : _Name(iFile == "-" ? "standard input" : "'" + iFile + "'"),
      _File(iFile == "-" ? stdin : std::fopen(iFile.c_str(), "re"))
{
    if (!_File)
        throw Failure(_Name + " cannot be opened for reading: " + std::strerror(errno));
}

LineReader::~LineReader()
{
    std::free(_Line);
    if (_File != stdin)
        std::fclose(_File);
}

bool LineReader::Next()
{
    const ssize_t length = getline(&_Line, &_Room, _File);
    if (length < 0 && !std::feof(_File))
        throw Failure(_Name + " cannot be read: " + std::strerror(errno));
    _Length = length < 0 ? 0 : static_cast<std::size_t>(length);
    ++_Number;
    return length >= 0;
}

std::string LineReader::Place() const
{
    return "line " + std::to_string(_Number) + " of " + _Name;
}
