#include "_SEQUENCE_octet.h"

void _SEQUENCE_octet::Assignation(const void* iSource, int iIndex)
{
    buffer()[iIndex] = static_cast<const unsigned char*>(iSource)[iIndex];
}
