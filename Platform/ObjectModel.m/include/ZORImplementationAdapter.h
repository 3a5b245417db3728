#pragma once

#include "ZOREventSubscriber.h"
#include "ZORHandle.h"
#include "ZORListValZORUnicodeString.h"
#include "ZORUnicodeString.h"

#include <memory>
#include <vector>

// What the operations of a ZORImplementationAdapter say that depend on a document store.
enum ZORStoreAnswer : int {
    ZORStoreDone = 0,         // what was asked for is there
    ZORStoreNotSupported = 1, // the class of the object keeps its objects in no document
};

// Base of the classes whose objects do the work behind interfaces: name, identifier, and the links
// by which other objects point here.
//
//     part->SetName("plate");
//     part->AddInverseLink(assembly);               // the assembly points to the part
//     for (const ZORBaseUnknown_var& each : part->GetInverseLinks()) …
//
// These objects live in memory alone. The operations that ask for a document answer
// ZORStoreNotSupported and leave empty what they were to fill; a class whose objects are stored
// overrides them.
//
// A copy takes over the name; links and identifier are not copied.
//
// The order of the virtual operations is part of the binary interface.
// Thread rule: one thread at a time for one object; but the objects of a link may be used and go in
// different threads.
class ZOR_EXPORT ZORImplementationAdapter : public ZOREventSubscriber
{
    ZOR_DECLARE_CLASS
public:
    // An object without a name.
    ZORImplementationAdapter();
    // An object of the same name.
    ZORImplementationAdapter(const ZORImplementationAdapter& iOther);
    // Takes over the name; links and identifier stay this object's.
    ZORImplementationAdapter& operator=(const ZORImplementationAdapter& iOther);
    // Takes its links along, in both directions.
    ~ZORImplementationAdapter() override;

    // Notes that `iPointing` points to this object. Neither is kept alive by that; when one of them
    // goes, so does the link. Returns 1; 0 when the link was there already or for null.
    virtual int AddInverseLink(ZORImplementationAdapter* iPointing);
    // Takes the link back. Returns 1, or 0 when there was none.
    virtual int RemoveInverseLink(ZORImplementationAdapter* iPointing);
    // The objects that point to this one, in the order their links were made, each held by its
    // handle.
    virtual std::vector<ZORBaseUnknown_var> GetInverseLinks() const;

    // The name given with SetName; empty when there was none.
    virtual ZORUnicodeString GetName() const;
    // The same name as bytes: never null, valid until the next SetName or the object's end.
    virtual const char* GetName_B() const;
    // The text by which links name this object: its class, a blank and its name. Empty for an
    // object without a name.
    virtual ZORUnicodeString GetSymbolicLink() const;
    // The identifier of this object, the text form of a ZORUuid: made by the first call, the same
    // ever after, no other object's.
    virtual ZORUnicodeString GetIdentifier() const;

    // The document that holds the object.
    virtual ZORStoreAnswer GetDocument(ZORBaseUnknown_var& oDocument) const;
    // How the document is found: the kind of its locator.
    virtual ZORStoreAnswer GetLocatorType(ZORUnicodeString& oType) const;
    // What the document keeps about the object besides its contents.
    virtual ZORStoreAnswer GetAdditionalInfos(ZORListValZORUnicodeString& oInfos) const;
    // The areas that a document may be divided into.
    virtual ZORStoreAnswer
    ListSupportedAreasIdentifier(ZORListValZORUnicodeString& oIdentifiers) const;
    // Whether one of them is filled (1) or not (0).
    virtual ZORStoreAnswer IsAFilledArea(const ZORUnicodeString& iIdentifier, int& oFilled) const;
    // Brings the contents of an area into memory.
    virtual ZORStoreAnswer FillArea(const ZORUnicodeString& iIdentifier);
    // The name under which the document keeps the object.
    virtual ZORStoreAnswer GetStoredName(ZORUnicodeString& oName) const;
    // Brings the objects of other documents that this one points to into memory.
    virtual ZORStoreAnswer ExternalBindPointedObjects();

    // Gives the object a name; empty takes it away.
    void SetName(const ZORUnicodeString& iName);

private:
    struct Particulars; // nothing is allocated for an object that has none
    ZOR_HIDDEN Particulars& Own() const;

    mutable std::unique_ptr<Particulars> _Particulars;
};
