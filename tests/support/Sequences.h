#pragma once

#include "_SEQUENCE_CORBAAny.h"
#include "_SEQUENCE_octet.h"

#include <optional>
#include <string>
#include <vector>

// Sequences made from, and told as, plain values.

inline _SEQUENCE_octet Octets(const std::string& iOctets)
{
    const int count = static_cast<int>(iOctets.size());
    _SEQUENCE_octet octets;
    octets.maximum(count);
    octets.length(count);
    for (int i = 0; i < count; ++i)
        octets[i] = static_cast<unsigned char>(iOctets[static_cast<std::size_t>(i)]);
    return octets;
}

inline std::string Told(const _SEQUENCE_octet& iOctets)
{
    std::string told;
    for (int i = 0; i < iOctets.length(); ++i)
        told += static_cast<char>(iOctets[i]);
    return told;
}

// No value: an element that holds no identifier but, so that it can be told, a long.
using MaybeIdentifier = std::optional<std::string>;

inline CORBAAny AnyOf(const MaybeIdentifier& iIdentifier, int iNumber = 0)
{
    CORBAAny any;
    if (iIdentifier)
        any << Octets(*iIdentifier);
    else
        any << iNumber;
    return any;
}

// Elements that hold no identifier hold their position.
inline _SEQUENCE_CORBAAny Identifiers(const std::vector<MaybeIdentifier>& iIdentifiers,
                                      int iSpareRoom = 0)
{
    const int count = static_cast<int>(iIdentifiers.size());
    _SEQUENCE_CORBAAny list;
    list.maximum(count + iSpareRoom);
    list.length(count);
    for (int i = 0; i < count; ++i)
        list[i] = AnyOf(iIdentifiers[static_cast<std::size_t>(i)], i);
    return list;
}

inline _SEQUENCE_CORBAAny Longs(const std::vector<int>& iValues)
{
    const int count = static_cast<int>(iValues.size());
    _SEQUENCE_CORBAAny list;
    list.maximum(count);
    list.length(count);
    for (int i = 0; i < count; ++i)
        list[i] << iValues[static_cast<std::size_t>(i)];
    return list;
}

inline std::string Told(const CORBAAny& iAny)
{
    _SEQUENCE_octet octets;
    int number = 0;
    if (iAny >> octets)
        return '"' + Told(octets) + '"';
    if (iAny >> number)
        return std::to_string(number);
    return "kind " + std::to_string(iAny.type());
}

// What is in a list, one text an element.
inline std::vector<std::string> Told(const _SEQUENCE_CORBAAny& iList)
{
    std::vector<std::string> told;
    for (int i = 0; i < iList.length(); ++i)
        told.push_back(Told(iList[i]));
    return told;
}
