// What happens when there is no memory for a component: this program stands in for the platform
// where that asks for it.

#include "CapturedOutput.h"
#include "CatalogSite.h"
#include "ZORCallbackManager.h"
#include "ZORDUXNLSError.h"
#include "ZORDuxEventManager.h"
#include "ZORDuxMessenger.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <unistd.h>

namespace
{

bool none = false;

class NoMemory
{
public:
    NoMemory() { none = true; }
    ~NoMemory() { none = false; }
};

} // namespace

// ZORBaseUnknown::operator new(unsigned long)
extern "C" void* ComponentMemory(std::size_t iSize) noexcept asm("_ZN14ZORBaseUnknownnwEm");
void* ComponentMemory(std::size_t iSize) noexcept
{
    return none ? nullptr : std::malloc(iSize);
}

TEST(ZORDUXNLSError, SaysSoWhenThereIsNoMemoryForACatalog)
{
    const CatalogSite site;
    site.Write("Site", "A = 'a'\n");
    ZORDUXNLSError error;
    const CapturedOutput output(STDOUT_FILENO);
    {
        const NoMemory shortage;
        error.SetNLSMsg("Site", "A", 0, nullptr);
    }
    EXPECT_EQ(error.GetMessage(), "ZORDUXNLSError::SetNLSMsg - Internal error");
    EXPECT_EQ(output.Text(), "");
}

TEST(ZORDuxMessenger, RaisesWhenThereIsNoMemoryForACatalog)
{
    ZORDuxMessenger messenger;
    messenger.Set("CDA_W_0001");
    const NoMemory shortage;
    EXPECT_THROW(messenger.LoadMessage(), std::bad_alloc);
}

TEST(ZORDuxEventManager, IsNullWhileThereIsNoMemoryForIt)
{
    {
        const NoMemory shortage;
        EXPECT_EQ(ZORDuxEventManager::GetEventManager(), nullptr);
        ZORDuxEventManager::DispatchEvent("event", nullptr);
    }
    EXPECT_NE(ZORDuxEventManager::GetEventManager(), nullptr);
}
