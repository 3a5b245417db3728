// Files of lines, ten megabytes: read and written by the services, by the least that the system has
// to do, and by what one would use instead. The lines keep their ends.

#include "CreateServices.h"
#include "lines_rows.h"

#include <cstring>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

const ZORIDuxServices_var& Services()
{
    static const ZORIDuxServices_var services = CreateServices();
    return services;
}

// The whole file, and where its lines are.
struct Views {
    std::unique_ptr<char[]> bytes;
    std::vector<std::string_view> lines;

    auto begin() const { return lines.begin(); }
    auto end() const { return lines.end(); }
};

Views ReadViews(const char* iPath)
{
    const int file = open(iPath, O_RDONLY | O_CLOEXEC);
    struct stat status;
    fstat(file, &status);
    const auto size = static_cast<std::size_t>(status.st_size);
    Views views{std::unique_ptr<char[]>(new char[size]), {}};
    const bool whole = read(file, views.bytes.get(), size) == status.st_size;
    close(file);
    const char* const end = views.bytes.get() + (whole ? size : 0);
    for (const char* at = views.bytes.get(); at < end;) {
        const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        const char* const next = found ? static_cast<const char*>(found) + 1 : end;
        views.lines.emplace_back(at, static_cast<std::size_t>(next - at));
        at = next;
    }
    return views;
}

// Copies of 64 KB, each written as it is full.
void WriteViews(const Views& iLines, const char* iPath)
{
    constexpr std::size_t kSize = 65536;
    const int file = open(iPath, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const std::unique_ptr<char[]> buffer(new char[kSize]);
    std::size_t used = 0;
    bool written = true;
    for (const std::string_view each : iLines.lines) {
        if (each.size() > kSize - used) {
            written = written && write(file, buffer.get(), used) != -1;
            used = 0;
        }
        std::memcpy(buffer.get() + used, each.data(), each.size());
        used += each.size();
    }
    written = written && write(file, buffer.get(), used) != -1;
    close(file);
}

template <class List, class Append>
List ReadWithGetline(const char* iPath, Append iAppend)
{
    List lines;
    std::ifstream stream(iPath, std::ios::binary);
    for (std::string line; std::getline(stream, line);)
        iAppend(lines, line += '\n');
    return lines;
}

void WriteWithStream(const std::vector<std::string>& iLines, const char* iPath)
{
    std::ofstream stream(iPath, std::ios::binary);
    for (const std::string& each : iLines)
        stream << each;
}

const Rows kRows([] {
    const auto read = [](const char* iPath) { return Services()->ReadStream(iPath); };
    const auto getline = [](const char* iPath) {
        return ReadWithGetline<std::vector<std::string>>(
            iPath, [](auto& ioLines, const std::string& iLine) { ioLines.push_back(iLine); });
    };
    ReadRow("read", "ours", read);
    ReadRow("read", "reference", ReadViews);
    ReadRow("read", "getline", getline);
    ReadRow("read to the same list", "ours", read);
    ReadRow("read to the same list", "getline", [](const char* iPath) {
        return ReadWithGetline<ZORListValZORUnicodeString>(
            iPath, [](auto& ioLines, const std::string& iLine) {
                ioLines.Append(ZORUnicodeString(std::string_view(iLine)));
            });
    });
    WriteRow("ours", read, [](const ZORListValZORUnicodeString& iLines, const char* iPath) {
        Services()->WriteStream(iLines, iPath);
    });
    WriteRow("reference", ReadViews, WriteViews);
    WriteRow("ofstream", getline, WriteWithStream);
});

} // namespace
