#pragma once

#include "_SEQUENCE_CORBAAny.h"
#include "_SEQUENCE_octet.h"

#include <string>

// Identifiers as text: two hexadecimal digits for each octet; blanks between count for nothing. No
// digit at all is the empty identifier.

// The identifier that an argument of that name stands for. Other text is a UsageError.
_SEQUENCE_octet ParsedIdentifier(const std::string& iName, const std::string& iText);

// The identifiers of a file ("-": standard input), one a line. A line that is none is a Failure.
_SEQUENCE_CORBAAny ReadIdentifiers(const std::string& iFile);

// The octets as lower-case pairs with that text between.
std::string HexadecimalPairs(const _SEQUENCE_octet& iOctets, const char* iBetween);
