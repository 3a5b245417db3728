// The site's security component: what each user may do is a setting of the settings file
// "SiteRights", as in
//
//     anna = "add Wheel, add Frame"
//
// Programs get it from GetSecurity, which finds it through the dictionary file security.toml.

#include "CreateServices.h"
#include "ZORIDuxSecurity.h"
#include "ZORObject.h"
#include "ZORTie.h"

namespace
{

using DUXSecurity = ZORObject; // a late type: the adapter is the component

class TIEZORIDuxSecurityDUXSecurity final : public ZORIDuxSecurity
{
    ZOR_DECLARE_TIE(ZORIDuxSecurity, DUXSecurity)
public:
    int IsAllowed(const ZORUnicodeString& iUser, const ZORUnicodeString& iAction,
                  const ZORUnicodeString& iObject) override
    {
        if (iUser.IsEmpty())
            return 0;
        const ZORIDuxServices_var services = CreateServices();
        services->PutSettingSeparator(",");
        const ZORUnicodeString wanted = iAction + " " + iObject;
        for (const ZORUnicodeString& right :
             services->SeekPath(services->GetSetting(iUser, "SiteRights")))
            if (right == wanted)
                return 1;
        return 0;
    }
};

} // namespace

// The one name that others need.
ZOR_EXPORT ZORBaseUnknown* CreateTIEZORIDuxSecurityDUXSecurity(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(ZORIDuxSecurity, DUXSecurity, ZORKindTie)
