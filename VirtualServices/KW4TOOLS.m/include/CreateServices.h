#pragma once

#include "ZORIDuxServices.h"

// Makes the common services. The handle is the only owner; every call makes other ones.
//
//     ZORIDuxServices_var services = CreateServices();
//     ZORUnicodeString path = services->SearchPath("plate.model");
//
// Raises ZORDuxServicesMsg 0x20002, told on standard error, when the component or its interface is
// not to be had. Thread rule: any thread.
ZOR_EXPORT ZORIDuxServices_var CreateServices();
