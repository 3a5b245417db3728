#pragma once

#include <string>
#include <vector>

namespace CLI
{
class App;
}

// Arguments that the parser cannot misread. The parser knows many forms ("[a,b]" is a list, "++"
// ends a command, "-5" may be an option, a name may be that of another command); ours are none of
// them. So every argument that is not the name of an option or of a command goes through the parser
// with a mark in front that has no meaning there, and comes out as it was.

// Marks the arguments of a command line for `ioProgram` and puts them in the order it parses in.
//   - "--" ends the options.
//   - The value of an option may be anything.
//   - A "-" and a digit begin a number, unless they are an option of the command.
// The name of a command or of an option that does not exist is a UsageError, and so is an option
// without the value that it needs, or with two.
std::vector<std::string> MarkedArguments(const CLI::App& iProgram,
                                         const std::vector<std::string>& iArguments);

// The name of a command with those of the commands above it, as it is typed.
std::string FullName(const CLI::App& iCommand);

// The argument behind the mark.
std::string RawArgument(const std::string& iMarked);

// A message of the parser, with the arguments in it as they were.
std::string WithoutMarks(std::string iMessage);
