#include "VariableReference.h"

#include "ZORGetEnv.h"

namespace
{

// The name behind the "$" at the position.
ZORUnicodeString NameAt(const ZORUnicodeString& iPath, int iDollar)
{
    const ZORUnicodeString tail = iPath.SubString(iDollar, iPath.GetLengthInChar());
    const int slash = tail.SearchSubString("/", 0, ZORSearchForward);
    // Without a "/" the count is that of the whole path: it reaches the end of the tail anyhow.
    return tail.SubString(1, slash >= 1 ? slash - 1 : iPath.GetLengthInChar() - 1);
}

} // namespace

bool ExpandVariable(MethodFrame& ioFrame, ZORUnicodeString& ioPath)
{
    const int dollar = ioPath.SearchSubString("$", 0, ZORSearchForward);
    if (dollar < 0)
        return false;
    const ZORUnicodeString name = NameAt(ioPath, dollar);
    ioFrame.Value("Shell", name);
    const char* const value = ZORGetEnv(name.ConvertToChar());
    if (!value || !*value)
        return false;
    ioPath.ReplaceSubString(name, value);
    ioPath.ReplaceSubString("$", "");
    ioPath.ReplaceSubString("//", "/");
    return true;
}
