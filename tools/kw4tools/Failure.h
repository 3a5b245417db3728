#pragma once

#include <stdexcept>
#include <string>
#include <utility>

// What was asked for cannot be done: told in one line, exit status 2.
class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The command line is wrong: told with a pointer to the command's help, exit status 2.
class UsageError : public std::runtime_error
{
public:
    // `iCommand` is the command whose help tells more, when it is not the one that runs.
    explicit UsageError(const std::string& iProblem, std::string iCommand = {})
        : std::runtime_error(iProblem), _Command(std::move(iCommand))
    {
    }
    const std::string& Command() const { return _Command; }

private:
    std::string _Command;
};
