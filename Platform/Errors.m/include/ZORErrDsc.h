#pragma once

// One message of an error class: the text for an identifier. Places {1} to {99} in the text stand
// for the error's parameters. A descriptor with a null text describes nothing.
//
//     const ZORErrDsc kMessages[] = {{0x30001, "The part {1} is locked."}};
//
// Thread rule: tables are constant.
struct ZORErrDsc {
    unsigned int id;  // the identifier of the errors that the text is for
    const char* text; // static, or null
};
