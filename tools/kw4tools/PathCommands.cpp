// find, split, env, expand: path lists and environment variables.

#include "Commands.h"
#include "Program.h"
#include "ZORGetEnv.h"

namespace
{

const char kGroup[] = "Finding files";

void PrintAll(Session& ioSession, const ZORListValZORUnicodeString& iList)
{
    for (const ZORUnicodeString& element : iList)
        ioSession.Out().Line(View(element));
}

void AddFind(Program& ioProgram)
{
    Command& find = ioProgram.Add(kGroup, "find", "Find a file in the directories of a path list");
    const std::string& name = find.Argument("NAME", "The file's name, without a directory");
    const std::string& list =
        find.Argument("PATHLIST", "The directories, in the order they are to be tried in");
    find.Explains("Prints the first directory that has the file, \"/\" and the name.\n"
                  "Exit status 1 when none has it.");
    find.Example("kw4tools find stdio.h /usr/local/include:/usr/include");
    find.Does([&](Session& ioSession) {
        const ZORUnicodeString found = ioSession.Services().SeekFile(Text(name), Text(list));
        if (!found.IsEmpty())
            ioSession.Out().Line(View(found));
        return YesIf(!found.IsEmpty());
    });
}

void AddSplit(Program& ioProgram)
{
    Command& split = ioProgram.Add(kGroup, "split", "Print the directories of a path list");
    const std::string& list =
        split.Argument("PATHLIST", "Directories with separators between them");
    split.Explains("One directory a line, without the blanks around it.");
    split.Example("kw4tools split \"$PATH\"");
    split.Does([&](Session& ioSession) {
        PrintAll(ioSession, ioSession.Services().SeekPath(Text(list)));
        return Status::Yes;
    });
}

void AddEnv(Program& ioProgram)
{
    Command& env =
        ioProgram.Add(kGroup, "env", "Print the directories that an environment variable lists");
    const std::string& variable =
        env.Argument("VARIABLE", "The variable's name, without a \"$\"", Completion::Variable);
    env.Explains("One directory a line. Exit status 1 when the variable is not set.");
    env.Example("kw4tools env PATH");
    env.Does([&](Session& ioSession) {
        PrintAll(ioSession, ioSession.Services().GetEnv(Text(variable)));
        return YesIf(ZORGetEnv(variable.c_str()));
    });
}

void AddExpand(Program& ioProgram)
{
    Command& expand =
        ioProgram.Add(kGroup, "expand", "Replace an environment variable in a path by its value");
    const std::string& path =
        expand.Argument("PATH", "A path that may hold \"$\" and the name of a variable");
    expand.Explains("Only the first \"$\" counts; the name runs to the next \"/\" or to the end.\n"
                    "The path is printed as it is when the variable is not set or empty.");
    expand.Example("kw4tools expand '$HOME/models'");
    expand.Does([&](Session& ioSession) {
        ioSession.Out().Line(View(ioSession.Services().SeekEnv(Text(path))));
        return Status::Yes;
    });
}

} // namespace

void AddPathCommands(Program& ioProgram)
{
    AddFind(ioProgram);
    AddSplit(ioProgram);
    AddEnv(ioProgram);
    AddExpand(ioProgram);
}
