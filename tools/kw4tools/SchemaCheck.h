#pragma once

#include <string>
#include <vector>

// Tells what a schema library lacks to be loaded, and runs nothing of it.
//
//     const SchemaCheck check("AP214");
//     for (const std::string& each : check.Missing())
//         std::puts(each.c_str());
//
// The library is the one that LoadSchema would load. A child process, the system's loader, opens it
// with immediate binding, the libraries of this program around it, and tells what it does not find;
// it does so before it would start anything, so that neither creation function nor constructors
// run, and all that is missing is told, not only the first thing. Whether the creation function is
// there is read from the symbol tables of the library and of those it needs.
class SchemaCheck
{
public:
    // Checks the library of that schema. Raises a std::runtime_error when the check itself fails.
    explicit SchemaCheck(const std::string& iSchema);

    // What is missing, one thing each, in this order:
    // - "library <file>", alone, when the search finds none;
    // - "library <path>: <the loader's reason>", alone, when the loader refuses the file;
    // - "dependency <library>" for each library that it needs, or one that these need;
    // - "symbol <name>" for each function or variable (for a C++ one: "symbol <name> (<linkage
    //   name>)");
    // - "creation function <name>".
    // Empty when LoadSchema would succeed up to the call of the creation function.
    const std::vector<std::string>& Missing() const { return _Missing; }

private:
    void Check(const std::string& iPath, const std::string& iCreation);

    std::vector<std::string> _Missing;
};
