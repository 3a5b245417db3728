// The file operations of the services: access checks and line files.

#include "MethodFrame.h"
#include "ZORDuxServices.h"

#include <cstdio>
#include <memory>
#include <new>
#include <stdio_ext.h>
#include <unistd.h>

namespace
{

constexpr int kPieceSize = 1024; // bytes of a line read at a time, the ending NUL included

std::int32_t Check(MethodFrame& ioFrame, const ZORUnicodeString& iPath, int iMode,
                   const char* iGranted, const char* iRefused)
{
    const bool granted = access(iPath.ConvertToChar(), iMode) == 0;
    ioFrame.Note(granted ? iGranted : iRefused);
    return granted ? 1 : 0;
}

// A file that is read or written by one thread. Closed when an exception passes.
class Stream
{
public:
    Stream(const ZORUnicodeString& iFileName, const char* iMode)
        : _File(std::fopen(iFileName.ConvertToChar(), iMode))
    {
        if (_File)
            __fsetlocking(_File.get(), FSETLOCKING_BYCALLER);
    }

    // Has the file read a large block at a time. What is written goes out in the blocks of the C
    // library, as these decide whether a full disk is told by a write or by the close.
    void ReadAhead()
    {
        constexpr std::size_t kBlockSize = 65536; // few system calls, and all in the cache
        _Block.reset(new (std::nothrow) char[kBlockSize]);
        if (_Block)
            std::setvbuf(_File.get(), _Block.get(), _IOFBF, kBlockSize);
    }

    explicit operator bool() const { return _File != nullptr; }
    std::FILE* Get() const { return _File.get(); }
    bool Close() { return std::fclose(_File.release()) == 0; }
    // For the rest of the process, and its block with it.
    void LeaveOpen()
    {
        static_cast<void>(_File.release());
        static_cast<void>(_Block.release());
    } // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)

private:
    struct Closing {
        void operator()(std::FILE* iFile) const { std::fclose(iFile); }
    };
    std::unique_ptr<char[]> _Block; // null, or that of the file, which it outlives
    std::unique_ptr<std::FILE, Closing> _File;
};

int Close(MethodFrame& ioFrame, Stream& ioStream)
{
    const bool closed = ioStream.Close();
    ioFrame.Note(closed ? "Close Stream: OK" : "Close Stream: KO");
    return closed ? 1 : 0;
}

Stream Open(MethodFrame& ioFrame, const ZORUnicodeString& iFileName, const char* iMode)
{
    Stream stream(iFileName, iMode);
    ioFrame.Note(stream ? "Open Stream: OK" : "Open Stream: KO");
    return stream;
}

} // namespace

ZORDuxFileAccess ZORDuxServices::CheckFile(const ZORUnicodeString& iFullPath)
{
    MethodFrame frame("ZORDuxServices::CheckFile");
    frame.Value("iFullPath", iFullPath);
    return Guarded(ErrorReport::Short, [&] {
        ZORDuxFileAccess may{};
        may.exists = Check(frame, iFullPath, F_OK, "File exist", "File does not exist");
        may.readable = Check(frame, iFullPath, R_OK, "Read Mode OK", "Read Mode KO");
        may.writable = Check(frame, iFullPath, W_OK, "Write Mode OK", "Write Mode KO");
        may.executable = Check(frame, iFullPath, X_OK, "Execute Mode OK", "Execute Mode KO");
        return may;
    });
}

// After an error the file is left open, here and in WriteStream: callers that fork or pass
// descriptors on count on the numbers they have seen so far.
ZORListValZORUnicodeString ZORDuxServices::ReadStream(const ZORUnicodeString& iFileName)
{
    MethodFrame frame("ZORDuxServices::ReadStream");
    frame.Value("iFileName", iFileName);
    return Guarded(ErrorReport::Short, [&] {
        ZORListValZORUnicodeString pieces;
        Stream stream = Open(frame, iFileName, "r");
        if (!stream)
            return pieces;
        stream.ReadAhead();
        char piece[kPieceSize];
        while (std::fgets(piece, kPieceSize, stream.Get()))
            pieces.Append(ZORUnicodeString(piece));
        if (!std::feof(stream.Get())) {
            stream.LeaveOpen();
            frame.Note("Could not read data file");
            return pieces;
        }
        frame.Note("Read Stream: OK");
        Close(frame, stream);
        return pieces;
    });
}

int ZORDuxServices::WriteStream(const ZORListValZORUnicodeString& iLines,
                                const ZORUnicodeString& iFileName)
{
    MethodFrame frame("ZORDuxServices::WriteStream");
    frame.Value("iFileName", iFileName);
    return Guarded(ErrorReport::Short, [&] {
        Stream stream = Open(frame, iFileName, "w");
        if (!stream)
            return 0;
        for (const ZORUnicodeString& line : iLines)
            if (std::fputs(line.ConvertToChar(), stream.Get()) == EOF) {
                stream.LeaveOpen();
                frame.Note("Write Stream: KO");
                return 0;
            }
        frame.Note("Write Stream: OK");
        return Close(frame, stream);
    });
}
