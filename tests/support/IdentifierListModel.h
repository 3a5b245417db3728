#pragma once

#include "Sequences.h"
#include "ZORConfigServices.h"

#include <string>

// A second opinion on identifier lists: what the functions of ZORConfigServices.h are defined by,
// step by step, with nothing saved.
namespace plain
{

inline int Exists(_SEQUENCE_CORBAAny& iList, CORBAAny& iValue)
{
    if (iList.length() == 0)
        return 0;
    _SEQUENCE_octet key;
    iValue >> key;
    for (int i = 0; i < iList.length(); ++i) {
        _SEQUENCE_octet element;
        iList[i] >> element;
        if (SequenceIsEqual(key, element) == 1)
            return 1;
    }
    return 0;
}

inline void Append(_SEQUENCE_CORBAAny& ioList, const CORBAAny& iElement)
{
    ioList.maximum(ioList.maximum() + 1);
    ioList.length(ioList.length() + 1);
    ioList[ioList.length() - 1] = iElement;
}

inline void RemoveDuplicate(_SEQUENCE_CORBAAny& ioList)
{
    _SEQUENCE_CORBAAny work;
    _SEQUENCE_octet x, y;
    if (ioList.length() >= 1) {
        for (int i = 0; i + 1 != ioList.length(); ++i) {
            ioList[i] >> x;
            bool found = false;
            for (int j = i + 1; j < ioList.length() && !found; ++j) {
                ioList[j] >> y;
                found = SequenceIsEqual(x, y) == 1;
            }
            if (!found)
                Append(work, ioList[i]);
        }
        Append(work, ioList[ioList.length() - 1]);
    }
    ioList.maximum(0);
    ioList.length(0);
    ioList.maximum(work.maximum());
    ioList.length(work.length());
    for (int i = 0; i < work.length(); ++i)
        ioList[i] = work[i];
}

inline _SEQUENCE_CORBAAny Intersection(_SEQUENCE_CORBAAny& iFirst, _SEQUENCE_CORBAAny& iSecond)
{
    _SEQUENCE_CORBAAny result;
    _SEQUENCE_octet x, y;
    result.maximum(iFirst.maximum() + iSecond.maximum());
    result.length(0);
    for (int i = 0; i < iFirst.length(); ++i) {
        iFirst[i] >> x;
        for (int j = 0; j < iSecond.length(); ++j) {
            iSecond[j] >> y;
            if (SequenceIsEqual(x, y) == 1) {
                result.length(result.length() + 1);
                result[result.length() - 1] = iFirst[i];
                break;
            }
        }
    }
    return result;
}

inline _SEQUENCE_CORBAAny Subtraction(_SEQUENCE_CORBAAny& iFirst, _SEQUENCE_CORBAAny& iSecond)
{
    _SEQUENCE_CORBAAny result;
    _SEQUENCE_octet x, y;
    result.maximum(0);
    result.length(0);
    for (int i = 0; i < iFirst.length(); ++i) {
        iFirst[i] >> x;
        bool found = false;
        for (int j = 0; j < iSecond.length(); ++j) {
            iSecond[j] >> y;
            if (SequenceIsEqual(x, y) == 1)
                found = true;
        }
        if (!found)
            Append(result, iFirst[i]);
    }
    return result;
}

} // namespace plain

// Length, room and elements.
inline std::string Everything(const _SEQUENCE_CORBAAny& iList)
{
    std::string told = std::to_string(iList.length()) + " of " + std::to_string(iList.maximum());
    for (const std::string& each : Told(iList))
        told += ' ' + each;
    return told;
}
