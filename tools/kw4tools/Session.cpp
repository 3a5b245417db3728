#include "Session.h"

ZORIDuxServices& Session::Services()
{
    if (!_Services) {
        _Services = CreateServices();
        if (separator)
            _Services->PutSettingSeparator(Text(*separator));
    }
    return *_Services;
}
