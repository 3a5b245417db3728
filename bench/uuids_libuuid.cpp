#include "uuids_rows.h"

#include <uuid/uuid.h>

namespace
{

const Rows kRows([] {
    UuidRow("libuuid", [](char* oText) {
        uuid_t octets;
        uuid_generate_random(octets);
        uuid_unparse_lower(octets, oText);
    });
});

} // namespace
