#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

// Runs a program to its end, in an environment and with an input of the test's choice, and tells
// what came out of it.
//
//     RunProgram program("/usr/bin/wc");
//     program.Input("a line\n");
//     EXPECT_EQ(program({"-l"}).out, "1\n");
//
// What is set stays set for the following runs.
class RunProgram
{
public:
    struct Outcome {
        int status; // the exit status, or 128 and the signal that ended the program
        std::string out;
        std::string err;
    };

    explicit RunProgram(std::string iPath) : _Path(std::move(iPath)) {}

    // An environment variable; without a value it is unset. All others are the test's own.
    RunProgram& Environment(const std::string& iName, const std::optional<std::string>& iValue);
    // What the program reads from standard input; nothing at first.
    RunProgram& Input(std::string iBytes);
    // The directory the program runs in; the test's own at first.
    RunProgram& In(std::string iDirectory);
    // Where standard output goes instead of to the outcome: a file or device.
    RunProgram& OutputTo(std::string iPath);
    // Standard output is a pipe that nobody reads.
    RunProgram& OutputToBrokenPipe();
    // All three streams are a terminal; what the program writes to it is the outcome's `out`, and
    // the input is typed there, and its end.
    RunProgram& OnTerminal();
    // The program starts with that descriptor closed.
    RunProgram& Closed(int iDescriptor);

    Outcome operator()(const std::vector<std::string>& iArguments) const;

private:
    Outcome RunOnTerminal(const std::vector<std::string>& iArguments) const;
    [[noreturn]] void Become(const std::vector<std::string>& iArguments, int iIn, int iOut,
                             int iErr) const;

    std::string _Path;
    std::map<std::string, std::optional<std::string>> _Environment;
    std::string _Input;
    std::string _Directory;
    std::string _OutputPath;
    bool _BrokenPipe = false;
    bool _Terminal = false;
    std::vector<int> _Closed;
};
