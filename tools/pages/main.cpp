// Writes the man page and the completions of kw4tools into a directory, from the program's own
// help:
//
//     kw4tools_pages DIRECTORY

#include "BashCompletion.h"
#include "Commands.h"
#include "ManPage.h"
#include "Program.h"
#include "ZshCompletion.h"

#include <fstream>
#include <iostream>
#include <string>

namespace
{

template <class Write>
bool WriteFile(const std::string& iPath, Write iWrite)
{
    std::ofstream stream(iPath);
    iWrite(stream);
    if (!stream.flush())
        std::cerr << "kw4tools_pages: cannot write " << iPath << std::endl;
    return stream.good();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: kw4tools_pages DIRECTORY" << std::endl;
        return 2;
    }
    Program program;
    AddCommands(program);
    const std::string directory = argv[1];
    const Command& root = program.Root();
    const auto man = [&](std::ostream& ioStream) {
        WriteManPage(root, KW4TOOLS_VERSION, ioStream);
    };
    const auto bash = [&](std::ostream& ioStream) { WriteBashCompletion(root, ioStream); };
    const auto zsh = [&](std::ostream& ioStream) { WriteZshCompletion(root, ioStream); };
    return WriteFile(directory + "/kw4tools.1", man) &&
                   WriteFile(directory + "/kw4tools.bash", bash) &&
                   WriteFile(directory + "/_kw4tools", zsh)
               ? 0
               : 2;
}
