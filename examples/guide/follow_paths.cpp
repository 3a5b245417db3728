// Looks for a file: along the search path of the site, along a path list in an environment
// variable, along a path list of its own.
//
//     follow_paths FILE

#include "CreateServices.h"

#include <iostream>

namespace
{

void Show(const char* iHow, const ZORUnicodeString& iPath)
{
    std::cout << iHow << ": " << (iPath.IsEmpty() ? "nowhere" : iPath) << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const ZORUnicodeString file = argv[1];
    ZORIDuxServices_var services = CreateServices();

    Show("search path", services->SearchPath(file));

    // A path list in an environment variable, and one that holds a variable.
    for (const ZORUnicodeString& directory : services->GetEnv("MODELS"))
        std::cout << "MODELS names " << directory << '\n';
    Show("expanded", services->SeekEnv("$SITE/models"));

    // Path lists of one's own, with a separator of one's own; each of its characters separates.
    services->PutSettingSeparator(";,");
    const ZORUnicodeString list = "drafts; models,, archive";
    for (const ZORUnicodeString& directory : services->SeekPath(list))
        std::cout << "the list names " << directory << '\n';
    Show("list", services->SeekFile(file, "drafts;models"));
}
