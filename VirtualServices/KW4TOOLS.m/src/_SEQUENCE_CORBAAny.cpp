#include "_SEQUENCE_CORBAAny.h"

void _SEQUENCE_CORBAAny::Assignation(const void* iSource, int iIndex)
{
    buffer()[iIndex] = static_cast<const CORBAAny*>(iSource)[iIndex];
}
