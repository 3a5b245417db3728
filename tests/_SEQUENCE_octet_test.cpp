#include "_SEQUENCE_octet.h"

#include "Sequences.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <typeinfo>

TEST(_SEQUENCE_octet, HoldsOctetsOfAllValues)
{
    _SEQUENCE_octet octets;
    octets.maximum(256);
    octets.length(256);
    for (int i = 0; i < 256; ++i)
        octets[i] = static_cast<unsigned char>(i);
    const _SEQUENCE_octet copy(octets);
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(copy[i], i);
}

TEST(_SEQUENCE_octet, AssignationCopiesTheOctetOfThatIndexAlone)
{
    _SEQUENCE_octet octets = Octets("abc");
    octets.Assignation("xyz", 1);
    EXPECT_EQ(Told(octets), "ayc");
}

TEST(_SEQUENCE_octet, TakesOctetsThroughTheCopyLoop)
{
    _SEQUENCE_octet octets;
    octets.maximum(5);
    octets.length(3);
    octets.boucle("abc", 3);
    EXPECT_EQ(Told(octets), "abc");
    EXPECT_EQ(octets.maximum(), 5);
}

TEST(_SEQUENCE_octet, GetsItsTableFromTheLibrary)
{
    void* const library = dlopen("libKW4TOOLS.so.1", RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_NE(dlsym(library, "_ZTV15_SEQUENCE_octet"), nullptr);
    dlclose(library);
    void* const platform = dlopen("libZORPLATFORM.so.1", RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(platform, nullptr) << dlerror();
    EXPECT_EQ(dlsym(platform, "_ZTV15_SEQUENCE_octet"), nullptr);
    dlclose(platform);
    const _SEQUENCE_octet octets;
    EXPECT_STREQ(typeid(octets).name(), "15_SEQUENCE_octet");
}
