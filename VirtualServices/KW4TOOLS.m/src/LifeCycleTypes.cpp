#include "LifeCycleTypes.h"

NameValuePair::NameValuePair() {} // value: whoever makes the pair sets it

void _SEQUENCE_KeyComponent::Assignation(const void* iSource, int iIndex)
{
    buffer()[iIndex] = static_cast<const KeyComponent*>(iSource)[iIndex];
}

void _SEQUENCE_NameValuePair::Assignation(const void* iSource, int iIndex)
{
    buffer()[iIndex] = static_cast<const NameValuePair*>(iSource)[iIndex];
}

void _SEQUENCE_GenericFactory_ptr::Assignation(const void* iSource, int iIndex)
{
    buffer()[iIndex] = static_cast<const GenericFactory_ptr*>(iSource)[iIndex];
}
