#include "NearestName.h"

#include <algorithm>

namespace
{

// How many letters were left out, put in, changed or swapped (no letter twice).
std::size_t Mistakes(const std::string& iTyped, const std::string& iName)
{
    // Between the first letters of both, as many as the row and the column say.
    std::vector<std::vector<std::size_t>> between(iTyped.size() + 1,
                                                  std::vector<std::size_t>(iName.size() + 1));
    for (std::size_t i = 0; i <= iTyped.size(); ++i)
        for (std::size_t j = 0; j <= iName.size(); ++j) {
            std::size_t& here = between[i][j];
            if (i == 0 || j == 0) {
                here = i + j;
                continue;
            }
            const bool same = iTyped[i - 1] == iName[j - 1];
            here = std::min({between[i - 1][j] + 1, between[i][j - 1] + 1,
                             between[i - 1][j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && iTyped[i - 1] == iName[j - 2] && iTyped[i - 2] == iName[j - 1])
                here = std::min(here, between[i - 2][j - 2] + 1);
        }
    return between.back().back();
}

// The only name that begins so, or nothing.
std::string Completed(const std::string& iTyped, const std::vector<std::string>& iNames)
{
    const auto begins = [&](const std::string& each) { return each.rfind(iTyped, 0) == 0; };
    const auto first = std::find_if(iNames.begin(), iNames.end(), begins);
    return std::count_if(iNames.begin(), iNames.end(), begins) == 1 ? *first : "";
}

} // namespace

std::string NearestName(const std::string& iTyped, const std::vector<std::string>& iNames)
{
    constexpr std::size_t kLongest = 32; // of no name here; a whole file is not compared
    if (iTyped.empty() || iTyped.size() > kLongest)
        return "";
    std::string nearest;
    std::size_t fewest = (iTyped.size() + 1) / 3 + 1;
    for (const std::string& name : iNames) {
        const std::size_t mistakes = Mistakes(iTyped, name);
        if (mistakes < fewest) {
            nearest = name;
            fewest = mistakes;
        }
    }
    return nearest.empty() ? Completed(iTyped, iNames) : nearest;
}
