// Compares two lists of identifiers: what both have, what the second lacks.

#include "ZORConfigServices.h"

#include <cstring>
#include <iostream>

namespace
{

CORBAAny Identifier(const char* iText)
{
    _SEQUENCE_octet octets;
    const int length = static_cast<int>(std::strlen(iText));
    octets.maximum(length);
    octets.length(length);
    if (length > 0)
        std::memcpy(octets.buffer(), iText, std::strlen(iText));
    CORBAAny identifier;
    identifier << octets;
    return identifier;
}

void Add(_SEQUENCE_CORBAAny& ioList, const char* iText)
{
    const int last = ioList.length();
    ioList.maximum(last + 1);
    ioList.length(last + 1);
    ioList[last] = Identifier(iText);
}

void Show(const char* iWhat, const _SEQUENCE_CORBAAny& iList)
{
    std::cout << iWhat << ':';
    for (int i = 0; i < iList.length(); ++i) {
        int count = 0;
        const unsigned char* const octets = iList[i].PeekOctets(count);
        std::cout << ' ';
        std::cout.write(reinterpret_cast<const char*>(octets), count);
    }
    std::cout << '\n';
}

} // namespace

int main()
{
    _SEQUENCE_CORBAAny wanted;
    for (const char* each : {"bolt", "nut", "bolt", "plate"})
        Add(wanted, each);
    _SEQUENCE_CORBAAny stored;
    for (const char* each : {"plate", "bolt", "rod"})
        Add(stored, each);

    RemoveDuplicate(wanted); // of each identifier the last one stays
    Show("wanted", wanted);
    Show("in both", SequenceCrbAnyIntersection(wanted, stored));
    Show("missing", SequenceCrbAnySubstraction(wanted, stored));

    CORBAAny rod = Identifier("rod");
    std::cout << "rod wanted: " << AlreadyExist(wanted, rod)
              << ", stored: " << AlreadyExist(stored, rod) << '\n';
}
