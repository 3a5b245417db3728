#include "CompletionWords.h"

std::vector<std::string> OptionNames(const Command::Parameter& iOption)
{
    std::vector<std::string> names;
    std::size_t begin = 0;
    for (std::size_t comma = 0; comma != std::string::npos; begin = comma + 1) {
        comma = iOption.name.find(',', begin);
        names.push_back(iOption.name.substr(begin, comma - begin));
    }
    return names;
}
