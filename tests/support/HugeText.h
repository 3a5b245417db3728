#pragma once

#include <cstddef>
#include <new>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

// A text of 3,000,000,000 characters "x" in four megabytes of memory.
class HugeText
{
public:
    static constexpr std::size_t kLength = 3000000000;

    HugeText()
    {
        const int file = memfd_create("huge", 0);
        const std::string piece(kPiece, 'x');
        if (file < 0 || write(file, piece.data(), kPiece) != static_cast<ssize_t>(kPiece))
            throw std::bad_alloc();
        _Text = static_cast<char*>(Map(nullptr, kMapped, -1, MAP_ANONYMOUS));
        for (std::size_t at = 0; at < kLength; at += kPiece)
            Map(_Text + at, kPiece, file, MAP_FIXED);
        close(file);
        _Text[kLength] = '\0'; // the last piece is mapped privately, as all of them
    }
    ~HugeText() { munmap(_Text, kMapped); }
    HugeText(const HugeText&) = delete;
    HugeText& operator=(const HugeText&) = delete;
    operator const char*() const { return _Text; }

private:
    static constexpr std::size_t kPiece = 1 << 22;
    static constexpr std::size_t kMapped = (kLength / kPiece + 1) * kPiece;

    static void* Map(void* iAt, std::size_t iSize, int iFile, int iFlags)
    {
        void* const mapped = mmap(iAt, iSize, PROT_READ | PROT_WRITE,
                                  MAP_PRIVATE | MAP_NORESERVE | iFlags, iFile, 0);
        if (mapped == MAP_FAILED)
            throw std::bad_alloc();
        return mapped;
    }

    char* _Text;
};
