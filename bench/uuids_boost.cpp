#include "uuids_rows.h"

#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_generators.hpp>
#include <boost/uuid/uuid_io.hpp>

namespace
{

const Rows kRows([] {
    UuidRow("Boost", [](char* oText) {
        static boost::uuids::random_generator generator;
        std::strcpy(oText, boost::uuids::to_string(generator()).c_str());
    });
});

} // namespace
