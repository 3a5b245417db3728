#include "_SEQUENCE_CORBAAny.h"

#include "Sequences.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(_SEQUENCE_CORBAAny, HoldsAnysOfAnyKind)
{
    _SEQUENCE_CORBAAny anys = Identifiers({"p", std::nullopt});
    anys.maximum(3);
    anys.length(3);
    EXPECT_THAT(Told(anys), ElementsAre("\"p\"", "1", "kind 0")) << "new elements are empty";
}

TEST(_SEQUENCE_CORBAAny, ACopyIsIndependentOfItsSource)
{
    _SEQUENCE_CORBAAny source = Identifiers({"p", std::string(100, 'q')}, 3);
    const _SEQUENCE_CORBAAny copy = source;
    source[0] << 1;
    source[1] << 2;
    EXPECT_THAT(Told(copy), ElementsAre("\"p\"", '"' + std::string(100, 'q') + '"'));
    EXPECT_EQ(copy.maximum(), 5);
}

TEST(_SEQUENCE_CORBAAny, AssignationCopiesTheAnyOfThatIndexAlone)
{
    _SEQUENCE_CORBAAny anys = Longs({1, 2, 3});
    const _SEQUENCE_CORBAAny others = Longs({10, 20, 30});
    anys.Assignation(others.buffer(), 1);
    EXPECT_THAT(Told(anys), ElementsAre("1", "20", "3"));
}

TEST(_SEQUENCE_CORBAAny, KeepsItsElementsWhenTheRoomChanges)
{
    const std::string large(100, 'q');
    _SEQUENCE_CORBAAny anys = Identifiers({"p", large, std::nullopt});
    anys.maximum(10);
    anys.maximum(0);
    EXPECT_EQ(anys.maximum(), 3);
    EXPECT_THAT(Told(anys), ElementsAre("\"p\"", '"' + large + '"', "2"));
}

TEST(_SEQUENCE_CORBAAny, GetsItsTableFromTheLibrary)
{
    void* const library = dlopen("libKW4TOOLS.so.1", RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_NE(dlsym(library, "_ZTV18_SEQUENCE_CORBAAny"), nullptr);
    dlclose(library);
    void* const platform = dlopen("libZORPLATFORM.so.1", RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(platform, nullptr) << dlerror();
    EXPECT_EQ(dlsym(platform, "_ZTV18_SEQUENCE_CORBAAny"), nullptr);
    dlclose(platform);
}
