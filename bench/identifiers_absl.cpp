#include "identifiers_rows.h"

#include <absl/container/flat_hash_set.h>

namespace
{

const Rows kRows([] {
    IdentifierRows<WithSet<absl::flat_hash_set<std::string>, Octets>>("absl::flat_hash_set");
});

} // namespace
