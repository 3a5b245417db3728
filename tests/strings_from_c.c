/* Binds every string function by its plain name, as a module written in C does, and calls it. Its
   one argument is the library. That this file compiles shows that C takes the header. */
#include "ZORDuxStrings.h"

#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void* library;
static int failures;

static void check(int iHolds, const char* iWhat)
{
    if (!iHolds) {
        fprintf(stderr, "failed: %s\n", iWhat);
        ++failures;
    }
}

static void checkNew(char* iNewString, const char* iExpected, const char* iWhat)
{
    check(iNewString && strcmp(iNewString, iExpected) == 0, iWhat);
    free(iNewString);
}

static void bind(void* oFunction, const char* iName)
{
    void* const address = dlsym(library, iName);
    if (!address) {
        fprintf(stderr, "%s\n", dlerror());
        exit(1);
    }
    memcpy(oFunction, &address, sizeof address);
}

/* A pointer named after the function, of the type that the header gives it. */
#define BIND(name)                                                                                 \
    __typeof__(name)* c_##name;                                                                    \
    bind(&c_##name, #name)

static void cutting(void)
{
    BIND(insert);
    BIND(left);
    BIND(overly);
    BIND(pad);
    BIND(right);
    BIND(strip);
    BIND(substr);
    checkNew(c_insert("XY", "abc", 1), "aXYbc", "insert");
    checkNew(c_left("abc", 2), "ab", "left");
    checkNew(c_overly("XY", "abcd", 4), "abcXY", "overly");
    checkNew(c_pad("ab", 4, '*'), "ab**", "pad");
    check(strcmp(c_right("abc", 1), "c") == 0, "right");
    checkNew(c_strip("a  ", "B", " "), "a", "strip");
    checkNew(c_substr("abcdef", 2, 3), "bcd", "substr");
}

static void changing(void)
{
    char text[] = " Banana ";
    BIND(cswap);
    BIND(lower);
    BIND(pos);
    BIND(qstrip);
    BIND(upper);
    check(strcmp(c_qstrip(text), "Banana") == 0, "qstrip");
    check(strcmp(c_lower(text), "banana") == 0, "lower");
    check(c_cswap('a', 'b', text, 3) == 2, "cswap");
    check(strcmp(c_upper(text), "BANBNB") == 0, "upper");
    check(c_pos("NB", text, 1) == 3, "pos");
}

static void words(void)
{
    BIND(getwsep);
    BIND(setwsep);
    BIND(subword);
    BIND(word);
    BIND(wordlen);
    BIND(wordpos);
    BIND(xword);
    check(c_getwsep(0) == ' ' && c_getwsep(-1) == ' ', "the blank at first");
    check(strcmp(c_setwsep(','), ",") == 0, "setwsep");
    check(c_getwsep(0) == ',' && c_getwsep(-1) == ' ', "getwsep");
    checkNew(c_word("a,b,,c", 3), "c", "word");
    checkNew(c_subword("a,b,,c", 2, 2), "b,c", "subword");
    check(c_wordlen("a,bb", 2) == 2, "wordlen");
    check(c_wordpos("b", "a,b", 1) == 2, "wordpos");
    check(strcmp(c_xword("a,b", 2), "b") == 0, "xword");
}

int main(int argc, char** argv)
{
    library = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : NULL;
    if (!library) {
        fprintf(stderr, "%s\n", argc == 2 ? dlerror() : "say which library");
        return 1;
    }
    cutting();
    changing();
    words();
    return failures != 0;
}
