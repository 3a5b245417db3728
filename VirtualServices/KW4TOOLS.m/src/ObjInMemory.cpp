#include "ObjInMemory.h"

#include "ZORPSNTrace.h"

int ObjInMemory::_NbCfgItm = 0;
int ObjInMemory::_NbEff = 0;
int ObjInMemory::_NbCateg = 0;
int ObjInMemory::_NbCfgHndler = 0;
int ObjInMemory::_NbMatrix = 0;
int ObjInMemory::_NbCfgRule = 0;
int ObjInMemory::_UnloadModel = 0;
int ObjInMemory::_WorkInMemory = 0;
int ObjInMemory::_WorkInMemoryCpt = 0;

int ObjInMemory::SetWorkInMemory()
{
    ZORPSNTrace trace("ZORConfigServices ObjInMemory::SetWorkInMemory", 42, nullptr);
    if (_WorkInMemory != 0)
        return 0;
    _WorkInMemory = ++_WorkInMemoryCpt;
    return 1;
}

void ObjInMemory::UnsetWorkInMemory()
{
    ZORPSNTrace trace("ZORConfigServices ObjInMemory::UnsetWorkInMemory", 42, nullptr);
    _WorkInMemory = 0;
}

int ObjInMemory::WorkInMemory()
{
    ZORPSNTrace trace("ZORConfigServices ObjInMemory::WorkInMemory", 42, nullptr);
    return _WorkInMemory;
}
