#pragma once

#include "ZORRaisedError.h"

#include <iostream>

// Runs `iBody`, which is not an operation of the services, and tells of an error that it raises as
// they do. Returns what it returns.
template <class Body>
auto TellingErrors(Body&& iBody) -> decltype(iBody())
{
    try {
        return iBody();
    } catch (const ZORRaisedError& raised) {
        raised.Error().Display(1, std::cerr);
        raised.Error().PrintHistory(std::cerr);
        throw;
    }
}
