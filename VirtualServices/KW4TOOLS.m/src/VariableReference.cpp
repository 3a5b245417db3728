#include "VariableReference.h"

#include "TextView.h"
#include "ZORGetEnv.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace
{

// The path with the value in the place of the reference that begins at the offset, when the name
// stands nowhere before it.
ZORUnicodeString WithValue(std::string_view iPath, std::size_t iDollar, std::string_view iName,
                           const char* iValue)
{
    std::string path(iPath.substr(0, iDollar));
    path.append(iValue).append(iPath.substr(iDollar + 1 + iName.size()));
    return ZORUnicodeString(path);
}

} // namespace

bool ExpandVariable(MethodFrame& ioFrame, ZORUnicodeString& ioPath)
{
    const std::string_view path = View(ioPath);
    const std::size_t dollar = path.find('$');
    if (dollar == std::string_view::npos)
        return false;
    const std::size_t end = std::min(path.find('/', dollar), path.size());
    const ZORUnicodeString name(path.substr(dollar + 1, end - dollar - 1));
    ioFrame.Value("Shell", name);
    const char* const value = ZORGetEnv(name.ConvertToChar());
    if (!value || !*value)
        return false;
    const std::string_view bytes = View(name);
    if (path.find(bytes) == dollar + 1)
        ioPath = WithValue(path, dollar, bytes, value);
    else {
        ioPath.ReplaceSubString(name, value);
        ioPath.ReplaceSubString("$", "");
    }
    if (std::strstr(ioPath.ConvertToChar(), "//"))
        ioPath.ReplaceSubString("//", "/");
    return true;
}
