#pragma once

#include <cstdlib>
#include <optional>
#include <string>

// Sets (or, with no value, unsets) an environment variable and puts back what was there.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const std::string& iName, const std::optional<std::string>& iValue)
        : _Name(iName)
    {
        if (const char* before = std::getenv(iName.c_str()))
            _Before = before;
        Put(iValue);
    }
    ~ScopedEnvironment() { Put(_Before); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void Put(const std::optional<std::string>& iValue)
    {
        if (iValue)
            setenv(_Name.c_str(), iValue->c_str(), 1);
        else
            unsetenv(_Name.c_str());
    }

    std::string _Name;
    std::optional<std::string> _Before;
};
