#pragma once

// One message of an error class: the text for an identifier. Places {1} to {99} in the text stand
// for the error's parameters. A descriptor with a null text describes nothing.
struct ZORErrDsc {
    unsigned int id;
    const char* text;
};
