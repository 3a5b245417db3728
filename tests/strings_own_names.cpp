// A program that has functions of its own by the names of the string functions. They are its own,
// and the library's are the library's: neither calls the other's.
#include "ZORDuxStringManagement.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>

extern "C" {
// A variable, functions with other arguments, and functions that take over if they are let.
int word = 17;
int left(int iValue)
{
    return iValue - 1;
}
double insert(double iFirst, double iSecond)
{
    return iFirst * iSecond;
}
char* right(const char*, unsigned)
{
    std::abort();
}
int pos(const char*, const char*, unsigned)
{
    std::abort();
}
char* qstrip(char*)
{
    std::abort();
}
char* strip(const char*, const char*, const char*)
{
    std::abort();
}
char* substr(const char*, unsigned, unsigned)
{
    std::abort();
}
char* subword(const char*, unsigned, unsigned)
{
    std::abort();
}
char* upper(char*)
{
    std::abort();
}
int wordlen(const char*, int)
{
    std::abort();
}
int wordpos(const char*, const char*, unsigned)
{
    std::abort();
}
char getwsep(int)
{
    std::abort();
}
}

namespace
{
int failures = 0;

void Check(bool iHolds, const char* iWhat)
{
    if (!iHolds) {
        std::fprintf(stderr, "failed: %s\n", iWhat);
        ++failures;
    }
}

void CheckNew(char* iNewString, const std::string& iExpected, const char* iWhat)
{
    Check(iNewString && iNewString == iExpected, iWhat);
    std::free(iNewString);
}

template <class Function>
Function Bind(void* iLibrary, const char* iName)
{
    return reinterpret_cast<Function>(dlsym(iLibrary, iName));
}

void CallTheProgramsOwn()
{
    Check(word == 17, "the program's word");
    Check(left(4) == 3, "the program's left");
    Check(insert(2, 3) == 6, "the program's insert");
}

void CallTheLibrarysByName(const char* iLibrary)
{
    void* const library = dlopen(iLibrary, RTLD_NOW | RTLD_NOLOAD);
    Check(library != nullptr, "the library is there");
    if (!library)
        return;
    CheckNew(Bind<char* (*)(const char*, unsigned)>(library, "word")("a b", 2), "b", "word");
    CheckNew(Bind<char* (*)(const char*, unsigned)>(library, "left")("abc", 2), "ab", "left");
    CheckNew(Bind<char* (*)(const char*, const char*, unsigned)>(library, "insert")("XY", "abc", 1),
             "aXYbc", "insert");
    Check(Bind<int (*)(const char*, const char*, unsigned)>(library, "wordpos")("b", "a b", 1) == 2,
          "wordpos, which asks for the separator");
    dlclose(library);
}

void LetTheLibraryCallItsOwn()
{
    ZORDuxStringManagement strings;
    ZORUnicodeString text = " one two ";
    const ZORUnicodeString two = "two";
    CheckNew(strings.Word(&text, 2), "two", "Word");
    CheckNew(strings.SubWord(&text, 1, 2), "one two", "SubWord");
    CheckNew(strings.SubStr(&text, 2, 3), "one", "SubStr");
    CheckNew(strings.Strip(&text, "L", " "), "one two ", "Strip");
    Check(strings.WordLen(&text, 2) == 3, "WordLen");
    Check(strings.WordPos(&two, &text, 1) == 2, "WordPos");
    Check(strings.Pos(&two, &text, 1) == 6, "Pos");
    Check(strings.Right(&text, 2) == text.ConvertToChar() + 7, "Right");
    Check(*strings.Upper(strings.QStrip(&text)) == "ONE TWO", "Upper and QStrip");
}
} // namespace

// The one argument is the library that the program is linked with.
int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    CallTheProgramsOwn();
    CallTheLibrarysByName(argv[1]);
    LetTheLibraryCallItsOwn();
    CallTheProgramsOwn();
    return failures != 0;
}
