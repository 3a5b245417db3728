#pragma once

#include "ZORSequenceOf.h"
#include "ZORUnicodeString.h"

// The value types of the CORBA life-cycle interface (CORBA Life Cycle Service, CosLifeCycle and
// CosNaming): factory keys, creation criteria and lists of factories.
//
//     _SEQUENCE_KeyComponent key;
//     key.maximum(1);
//     key.length(1);
//     key[0].kind = "object interface";
//
// The services do not use them; they are for callers that speak the life-cycle protocol. Room,
// length and elements of the sequences are those of ZORSequenceOf.
//
// Thread rule: as for an int. Two threads may use two of them, or read one.

class GenericFactory;
// A factory, named by pointer only: its class is the caller's.
using GenericFactory_ptr = GenericFactory*;

// One step of a factory's name.
struct KeyComponent {
    ZORUnicodeString identifier; // the step's own name
    ZORUnicodeString kind;       // what sort of name that is
};

// A named creation criterion. The handle of its value is one word whose meaning the name gives; a
// new pair does not set it, and copies share it.
struct ZOR_EXPORT NameValuePair {
    // A pair with an empty name and a value that is not set.
    NameValuePair();

    ZORUnicodeString name; // of the criterion
    void* value;           // not owned
};

// A factory's name: its steps, from the outermost on.
class ZOR_EXPORT _SEQUENCE_KeyComponent final : public ZORSequenceOf<KeyComponent>
{
public:
    // Empty: no room, no length.
    _SEQUENCE_KeyComponent() = default;
    // A copy with a buffer of its own, of the source's room.
    _SEQUENCE_KeyComponent(const _SEQUENCE_KeyComponent& iOther) : ZORSequenceOf() { Copy(iOther); }
    // The elements change hands, and this one's go to the source.
    _SEQUENCE_KeyComponent(_SEQUENCE_KeyComponent&&) noexcept = default;
    _SEQUENCE_KeyComponent& operator=(_SEQUENCE_KeyComponent&&) noexcept = default;
    // Becomes a copy, with a buffer of its own.
    _SEQUENCE_KeyComponent& operator=(const _SEQUENCE_KeyComponent& iOther)
    {
        Copy(iOther);
        return *this;
    }

    // Copies both texts of element `iIndex` of an array of KeyComponent into the element of that
    // index.
    void Assignation(const void* iSource, int iIndex) override;
};

// The criteria by which an object is to be made.
class ZOR_EXPORT _SEQUENCE_NameValuePair final : public ZORSequenceOf<NameValuePair>
{
public:
    // Empty: no room, no length.
    _SEQUENCE_NameValuePair() = default;
    // A copy with a buffer of its own, of the source's room.
    _SEQUENCE_NameValuePair(const _SEQUENCE_NameValuePair& iOther) : ZORSequenceOf()
    {
        Copy(iOther);
    }
    // The elements change hands, and this one's go to the source.
    _SEQUENCE_NameValuePair(_SEQUENCE_NameValuePair&&) noexcept = default;
    _SEQUENCE_NameValuePair& operator=(_SEQUENCE_NameValuePair&&) noexcept = default;
    // Becomes a copy, with a buffer of its own.
    _SEQUENCE_NameValuePair& operator=(const _SEQUENCE_NameValuePair& iOther)
    {
        Copy(iOther);
        return *this;
    }

    // Copies name and handle of element `iIndex` of an array of NameValuePair into the element of
    // that index; what the handle leads to is shared.
    void Assignation(const void* iSource, int iIndex) override;
};

// A list of factories. The pointers are copied as they are: the sequence holds no references.
class ZOR_EXPORT _SEQUENCE_GenericFactory_ptr final : public ZORSequenceOf<GenericFactory_ptr>
{
public:
    // Empty: no room, no length.
    _SEQUENCE_GenericFactory_ptr() = default;
    // A copy with a buffer of its own, of the source's room.
    _SEQUENCE_GenericFactory_ptr(const _SEQUENCE_GenericFactory_ptr& iOther) : ZORSequenceOf()
    {
        Copy(iOther);
    }
    // The elements change hands, and this one's go to the source.
    _SEQUENCE_GenericFactory_ptr(_SEQUENCE_GenericFactory_ptr&&) noexcept = default;
    _SEQUENCE_GenericFactory_ptr& operator=(_SEQUENCE_GenericFactory_ptr&&) noexcept = default;
    // Becomes a copy, with a buffer of its own.
    _SEQUENCE_GenericFactory_ptr& operator=(const _SEQUENCE_GenericFactory_ptr& iOther)
    {
        Copy(iOther);
        return *this;
    }

    // Copies element `iIndex` of an array of GenericFactory_ptr into the element of that index.
    void Assignation(const void* iSource, int iIndex) override;
};
