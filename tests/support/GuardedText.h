#pragma once

#include <cstring>
#include <new>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

// Storage between two pages that nobody may touch: a read or write beside a text that is laid
// against either of them ends the process.
class GuardedText
{
public:
    explicit GuardedText(std::size_t iMaximum)
        : _Page(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
          _Size((iMaximum + _Page) / _Page * _Page)
    {
        void* const whole =
            mmap(nullptr, _Size + 2 * _Page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (whole == MAP_FAILED)
            throw std::bad_alloc();
        _Begin = static_cast<char*>(whole) + _Page;
        if (mprotect(_Begin, _Size, PROT_READ | PROT_WRITE) != 0)
            throw std::bad_alloc();
    }
    ~GuardedText() { munmap(_Begin - _Page, _Size + 2 * _Page); }
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;

    // The bytes and a NUL, which is the last byte that may be touched. What lay here before is
    // gone.
    char* AtEnd(std::string_view iBytes)
    {
        char* const text = UnendedAtEnd(iBytes, 1);
        text[iBytes.size()] = '\0';
        return text;
    }

    // The bytes without a NUL: the last one is the last that may be touched.
    char* UnendedAtEnd(std::string_view iBytes, std::size_t iRoom = 0)
    {
        char* const text = _Begin + _Size - iRoom - iBytes.size();
        std::memcpy(text, iBytes.data(), iBytes.size());
        return text;
    }

    // The bytes and a NUL; the first one is the first that may be touched.
    char* AtBegin(std::string_view iBytes)
    {
        std::memcpy(_Begin, iBytes.data(), iBytes.size());
        _Begin[iBytes.size()] = '\0';
        return _Begin;
    }

private:
    std::size_t _Page;
    std::size_t _Size;
    char* _Begin = nullptr;
};
