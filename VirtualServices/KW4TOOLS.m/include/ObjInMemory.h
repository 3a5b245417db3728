#pragma once

#include "ZORExport.h"

// Whether the configuration code of this process is working in memory, and counters that the
// suite's configuration libraries share through this library.
//
//     if (ObjInMemory::SetWorkInMemory()) {
//         …                                  // nobody else had a period of work open
//         ObjInMemory::UnsetWorkInMemory();
//     }
//
// Periods of work do not nest: a second Set opens nothing, and one Unset closes the period whoever
// opened it. Every period has a serial number of its own, from 1; two of them can be told apart by
// it.
//
// Thread rule: one thread at a time. The state is the whole process's, and no access is atomic.
class ZOR_EXPORT ObjInMemory
{
public:
    // Opens a period of work and returns 1; when one is open already, changes nothing and returns
    // 0.
    static int SetWorkInMemory();
    // Closes the period that is open, if any.
    static void UnsetWorkInMemory();
    // The serial number of the open period, or 0.
    static int WorkInMemory();

    // Shared counters: 0 until their users count, who read and write them directly.
    static int _NbCfgItm;    // configuration items
    static int _NbEff;       // effectivities
    static int _NbCateg;     // categories
    static int _NbCfgHndler; // configuration handlers
    static int _NbMatrix;    // matrices
    static int _NbCfgRule;   // configuration rules
    static int _UnloadModel; // whether models are to be unloaded

    static int _WorkInMemory;    // 0, or the serial number of the open period
    static int _WorkInMemoryCpt; // how many periods were opened so far; never decreases
};
