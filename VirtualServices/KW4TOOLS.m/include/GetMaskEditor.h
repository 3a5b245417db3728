#pragma once

#include "ZORIDuxMaskEditor.h"

// Makes the mask editor: an object of the late type "DUXMaskEditor" that another library implements
// and the dictionary leads to (see ZORDictionaryDirectories.h). The handle is its only owner; every
// call makes another one. A null handle means that nobody implements it.
//
//     if (ZORIDuxMaskEditor_var found = GetMaskEditor())
//         found->PutMask("PartNumber", "##-####");
//
// An error on the way, such as a library that cannot be loaded, goes on to the caller; one of the
// ZORError family is told on standard error before. Opens no trace scope. Thread rule: any thread.
ZOR_EXPORT ZORIDuxMaskEditor_var GetMaskEditor();
