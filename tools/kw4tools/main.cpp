#include "Commands.h"
#include "Program.h"
#include "StandardStreams.h"

int main(int argc, char** argv)
{
    SecureStandardStreams();
    Program program;
    AddCommands(program);
    return program.Run({argv + (argc > 0 ? 1 : 0), argv + argc});
}
