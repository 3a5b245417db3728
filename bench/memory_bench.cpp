// The memory that strings, anys, subscribers and settings take.
#include "memory_rows.h"

#include "CORBAAny.h"
#include "CreateServices.h"
#include "ScopedEnvironment.h"
#include "ZORCallbackManager.h"
#include "_SEQUENCE_octet.h"

#include <algorithm>
#include <any>
#include <cstring>
#include <fstream>
#include <functional>
#include <sstream>
#include <string_view>
#include <unordered_map>

namespace
{

// ---- Ours

CORBAAny AnyOfOctets()
{
    _SEQUENCE_octet octets;
    octets.maximum(sizeof kSomeOctets);
    octets.length(sizeof kSomeOctets);
    std::memcpy(octets.buffer(), kSomeOctets, sizeof kSomeOctets);
    CORBAAny any;
    any << octets;
    return any;
}

CORBAAny AnyOfNumber()
{
    CORBAAny any;
    any << kSomeNumber;
    return any;
}

void CountCall(ZORBaseUnknown*, const char*, ZORNotification*, void*)
{
    ++calls;
}

// The process keeps what it has read of the file.
struct OurSettings {
    explicit OurSettings(const std::string& iPath)
        : directories("ZOR_SETTINGS_PATH", std::filesystem::path(iPath).parent_path().string())
    {
    }
    std::string Get(const std::string& iName) const
    {
        return services->GetSetting(iName.c_str(), "site").ConvertToChar();
    }
    const ScopedEnvironment directories;
    const ZORIDuxServices_var services = CreateServices();
};

void OurRows()
{
    StringMemory<ZORUnicodeString>("ours");
    AnyMemory("ours", AnyOfOctets, AnyOfNumber);
    SubscriberMemory(
        "ours", [] { return std::make_unique<ZORCallbackManager>(); },
        [](ZORCallbackManager& ioManager) { ioManager.AddCallback("Sent", CountCall, nullptr); },
        [](ZORCallbackManager& ioManager) {
            ioManager.DispatchCallbacks("Sent", nullptr, nullptr);
        });
    SettingMemory(
        "ours", false,
        [](const std::string& iPath) { return std::make_unique<OurSettings>(iPath); },
        [](const OurSettings& iKept, const std::string& iName) { return iKept.Get(iName); });
}

// ---- By hand: the bytes, and what leads to them

struct Freeing {
    void operator()(char* iText) const { std::free(iText); }
};

struct HandText {
    explicit HandText(const char* iText) : text(strdup(iText)) {}
    bool operator==(const HandText& iOther) const
    {
        return std::strcmp(text.get(), iOther.text.get()) == 0;
    }
    std::unique_ptr<char, Freeing> text;
};

struct HandAny {
    enum { kLong, kOctetsOfSize } kind;
    int size;
    union {
        int number;
        unsigned char octets[16];
    };
};

struct HandCallback {
    void (*function)(void*);
    void* data;
};

// The text of the file, whose names are sorted, and where each line begins.
struct HandSettings {
    explicit HandSettings(const std::string& iPath)
    {
        std::ostringstream bytes;
        bytes << std::ifstream(iPath, std::ios::binary).rdbuf();
        text = bytes.str();
        lines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
        for (std::size_t line = 0; line < text.size(); line = text.find('\n', line) + 1)
            lines.push_back(static_cast<std::uint32_t>(line));
    }
    std::string Get(const std::string& iName) const
    {
        const auto isBefore = [&](std::uint32_t iLine, const std::string& iSought) {
            return text.compare(iLine, iSought.size(), iSought) < 0;
        };
        const auto found = std::lower_bound(lines.begin(), lines.end(), iName, isBefore);
        const std::size_t begin = *found + iName.size() + 2;
        return text.substr(begin, text.find('"', begin) - begin);
    }
    std::string text;
    std::vector<std::uint32_t> lines;
};

void RowsByHand()
{
    StringMemory<HandText>("reference");
    AnyMemory(
        "reference",
        [] {
            HandAny any{HandAny::kOctetsOfSize, sizeof kSomeOctets, {}};
            std::memcpy(any.octets, kSomeOctets, sizeof kSomeOctets);
            return any;
        },
        [] {
            return HandAny{HandAny::kLong, 0, {kSomeNumber}};
        });
    SubscriberMemory(
        "reference", [] { return std::make_unique<std::vector<HandCallback>>(); },
        [](auto& ioSender) {
            ioSender.push_back({[](void*) { ++calls; }, nullptr});
        },
        [](auto& ioSender) {
            for (const HandCallback& each : ioSender)
                each.function(each.data);
        });
    SettingMemory(
        "reference", false,
        [](const std::string& iPath) { return std::make_unique<HandSettings>(iPath); },
        [](const HandSettings& iKept, const std::string& iName) { return iKept.Get(iName); });
}

// ---- With the standard library

using Table = std::unordered_map<std::string, std::string>;

std::unique_ptr<Table> ReadTable(const std::string& iPath)
{
    auto table = std::make_unique<Table>();
    std::ifstream file(iPath);
    std::string name;
    std::string value;
    while (std::getline(file, name, '=') && std::getline(file, value))
        table->emplace(name, value.substr(1, value.size() - 2));
    return table;
}

void StandardRows()
{
    StringMemory<std::string>("std");
    AnyMemory(
        "std",
        [] {
            return std::any(
                std::vector<unsigned char>(kSomeOctets, kSomeOctets + sizeof kSomeOctets));
        },
        [] { return std::any(kSomeNumber); });
    SubscriberMemory(
        "std", [] { return std::make_unique<std::vector<std::function<void()>>>(); },
        [](auto& ioSender) { ioSender.emplace_back([] { ++calls; }); },
        [](auto& ioSender) {
            for (const auto& each : ioSender)
                each();
        });
    SettingMemory("std", false, ReadTable,
                  [](const Table& iTable, const std::string& iName) { return iTable.at(iName); });
}

const Rows kRows([] {
    OurRows();
    RowsByHand();
    StandardRows();
});

} // namespace
