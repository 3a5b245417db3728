#include "ZORSequenceOf.h"

#include "_SEQUENCE_CORBAAny.h"
#include "_SEQUENCE_octet.h"

// Here live the tables of the two bases, so that every library shares one of each.
template class ZORSequenceOf<unsigned char>;
template class ZORSequenceOf<CORBAAny>;
