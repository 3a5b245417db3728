#include "Commands.h"
#include "Program.h"
#include "StandardStreams.h"

int main(int argc, char** argv)
{
    SecureStandardStreams();
    Program program;
    AddSettingsCommands(program);
    AddStatusCommand(program);
    AddSearchCommand(program);
    AddPathCommands(program);
    AddFileCommands(program);
    AddTextCommands(program);
    AddIdentifierCommand(program);
    AddSequenceCommands(program);
    AddModelCommands(program);
    AddMessageCommand(program);
    AddReportCommand(program);
    return program.Run({argv + (argc > 0 ? 1 : 0), argv + argc});
}
