// The operations of the services for schemas, containers and the classes behind interfaces.

#include "MethodFrame.h"
#include "ServicesErrors.h"
#include "ZORDuxModel.h"
#include "ZORDuxServices.h"
#include "ZORLoadExternalSchema.h"

void ZORDuxServices::LoadSchema(const ZORUnicodeString& iSchemaName)
{
    MethodFrame frame("ZORDuxServices::LoadSchema");
    frame.Value("iSchemaName", iSchemaName);
    Guarded(ErrorReport::Short,
            [&] { ZORLoadExternalSchema(iSchemaName.ConvertToChar(), nullptr); });
}

ZORIContainer_var ZORDuxServices::CreateSimpleContainer(const ZORUnicodeString& iModelType,
                                                        const ZORUnicodeString& iTheSchemaName)
{
    constexpr int kNoInterface = 354;
    MethodFrame frame("ZORDuxServices::CreateSimpleContainer");
    frame.Value("iModelType", iModelType);
    frame.Value("iTheSchemaName", iTheSchemaName);
    return Guarded(ErrorReport::Long, [&] {
        const auto object =
            ZORBaseUnknown_var::Adopt(new ZORDuxModel(iModelType.ConvertToChar(), iTheSchemaName));
        const ZORIDuxModel_var model(object.Get());
        if (model == ZORBaseUnknown_var())
            RaiseNoInterface("ZORDuxModel", "ZORIDuxModel", kServicesFile, kNoInterface);
        return model->GetContainer();
    });
}

ZORListValZORUnicodeString ZORDuxServices::GetDynamicObjList(const ZORUnicodeString& iInterfaceName)
{
    MethodFrame frame("ZORDuxServices::GetDynamicObjList");
    frame.Value("iInterfaceName", iInterfaceName);
    ZORListValZORUnicodeString names;
    const ZORSupportedClass* each =
        ZORMetaClass::ListOfSupportedClass(iInterfaceName.ConvertToChar());
    for (; each; each = each->next) {
        ZORUnicodeString name(each->className);
        frame.Value("ObjectType", name);
        names.Append(std::move(name));
    }
    return names;
}
