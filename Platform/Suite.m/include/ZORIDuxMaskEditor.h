#pragma once

#include "ZORClass.h"
#include "ZORHandle.h"
#include "ZORUnicodeString.h"

// The mask editor: keeps the masks by which applications show and enter attributes ("##-####" for a
// part number, for example). The library that implements it says what a mask looks like and where
// masks are kept.
//
//     if (ZORIDuxMaskEditor_var editor = GetMaskEditor())
//         mask = editor->GetMask("PartNumber");
//
// The order of the operations is part of the binary interface.
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORIDuxMaskEditor : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // For the classes that implement the interface.
    ZORIDuxMaskEditor();
    ~ZORIDuxMaskEditor() override;

    // The mask of an attribute; empty when it has none.
    virtual ZORUnicodeString GetMask(const ZORUnicodeString& iAttribute) = 0;
    // Gives the attribute a mask; empty takes it away.
    virtual void PutMask(const ZORUnicodeString& iAttribute, const ZORUnicodeString& iMask) = 0;
};

// A handle on it.
using ZORIDuxMaskEditor_var = ZORHandle<ZORIDuxMaskEditor>;
