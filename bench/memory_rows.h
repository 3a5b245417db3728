#pragma once

// Memory, not time: the bytes that each of many items takes, of what malloc has handed out.

#include "settings_rows.h"
#include "support/Rows.h"

#include <malloc.h>
#include <memory>
#include <utility>

inline constexpr int kItems = 10000;

// The bytes in use, with what malloc itself adds to each piece.
inline double HandedOut()
{
    const struct mallinfo2 now = mallinfo2();
    return static_cast<double>(now.uordblks + now.hblkhd);
}

// `iMake(count)` makes what keeps that many items; `iIsRight` tells whether kItems are there. What
// the first item makes for good is not counted.
template <class Make, class IsRight>
void MemoryRow(const std::string& iCase, const std::string& iWho, Make iMake, IsRight iIsRight)
{
    Row(iCase, iWho,
        [=](benchmark::State& ioState) {
            for ([[maybe_unused]] auto each : ioState) {
                iMake(1);
                const double before = HandedOut();
                auto kept = iMake(kItems);
                ioState.counters["bytes"] = (HandedOut() - before) / kItems;
                Check(ioState, iIsRight(kept));
            }
        })
        ->Iterations(1)
        ->Repetitions(1);
}

// Items side by side, each made by `iMake`.
template <class Make>
auto Many(int iCount, Make iMake)
{
    std::vector<decltype(iMake())> items;
    items.reserve(static_cast<std::size_t>(iCount));
    for (int i = 0; i < iCount; ++i)
        items.push_back(iMake());
    return items;
}

template <class Text>
void StringMemory(const std::string& iWho)
{
    for (const std::size_t length : {0U, 10U, 40U}) {
        const std::string text(length, 'x');
        MemoryRow(
            "string/" + std::to_string(length), iWho,
            [=](int iCount) { return Many(iCount, [&] { return Text(text.c_str()); }); },
            [=](const auto& iTexts) { return iTexts.back() == Text(text.c_str()); });
    }
}

// Both functions make an any: of kSomeOctets, and of kSomeNumber.
template <class Octets, class Number>
void AnyMemory(const std::string& iWho, Octets iOctets, Number iNumber)
{
    const auto all = [](const auto& iItems) { return iItems.size() == kItems; };
    MemoryRow(
        "any of 16 octets", iWho, [=](int iCount) { return Many(iCount, iOctets); }, all);
    MemoryRow(
        "any of a long", iWho, [=](int iCount) { return Many(iCount, iNumber); }, all);
}

inline constexpr unsigned char kSomeOctets[16] = {1, 2, 3, 4, 5, 6, 7, 8};
inline constexpr int kSomeNumber = 12;

// Callbacks count how often they were called: `iAdd(sender)` adds one to what `iNew` made, and
// `iSend(sender)` calls all.
inline long calls = 0;

template <class New, class Add, class Send>
void SubscriberMemory(const std::string& iWho, New iNew, Add iAdd, Send iSend)
{
    MemoryRow(
        "subscriber", iWho,
        [=](int iCount) {
            auto sender = iNew();
            for (int i = 0; i < iCount; ++i)
                iAdd(*sender);
            return sender;
        },
        [=](const auto& iSender) {
            calls = 0;
            iSend(*iSender);
            return calls == kItems;
        });
}

inline std::string TextOf(const Settings& iSettings, bool iIni)
{
    const std::string quote = iIni ? "" : "\"";
    std::string text = iIni ? "[settings]\n" : "";
    for (std::size_t i = 0; i < iSettings.names.size(); ++i)
        text += iSettings.names[i] + "=" + quote + iSettings.values[i] + quote + "\n";
    return text;
}

// A settings file of many names, each looked up once: `iRead(path)` reads it and gives what keeps
// it in memory, `iGet(*kept, name)` gets a value of it. The file is TOML or INI, with the names in
// a group "settings".
template <class Read, class Get>
void SettingMemory(const std::string& iWho, bool iIni, Read iRead, Get iGet)
{
    const auto isRight = [=](const auto& iKept, const Settings& iSettings) {
        for (std::size_t i = 0; i < iSettings.names.size(); ++i)
            if (iGet(*iKept.second, iSettings.names[i]) != iSettings.values[i])
                return false;
        return true;
    };
    const Settings all(kItems);
    MemoryRow(
        "setting", iWho,
        [=](int iCount) {
            const Settings settings(iCount);
            auto directory = std::make_unique<ScopedDirectory>(Place(false));
            const std::string path = directory->Write("site.toml", TextOf(settings, iIni));
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            auto kept = std::pair(std::move(directory), iRead(path));
            isRight(kept, settings);
            return kept;
        },
        [=](const auto& iKept) { return isRight(iKept, all); });
}
