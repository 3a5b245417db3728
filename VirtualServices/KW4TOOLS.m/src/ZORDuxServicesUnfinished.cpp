// Operations of the services whose own parts are not built yet: each raises an error that says so.

#include "MethodFrame.h"
#include "ServicesErrors.h"
#include "ZORDuxServices.h"
#include "ZORInternalError.h"

#include <string>

namespace
{

template <class Result>
Result Unfinished(const char* iMethod)
{
    MethodFrame frame(iMethod);
    return frame.Guard(ErrorReport::Short, [&]() -> Result {
        (new ZORInternalError)
            ->SetText((std::string(iMethod) + " is not available in this version.").c_str())
            .Throw(kServicesFile, __LINE__);
        return Result();
    });
}

} // namespace

void ZORDuxServices::LoadSchema(const ZORUnicodeString&)
{
    Unfinished<void>("ZORDuxServices::LoadSchema");
}

ZORListValZORUnicodeString ZORDuxServices::GetDynamicObjList(const ZORUnicodeString&)
{
    return Unfinished<ZORListValZORUnicodeString>("ZORDuxServices::GetDynamicObjList");
}

ZORIContainer_var ZORDuxServices::CreateSimpleContainer(const ZORUnicodeString&,
                                                        const ZORUnicodeString&)
{
    return Unfinished<ZORIContainer_var>("ZORDuxServices::CreateSimpleContainer");
}
