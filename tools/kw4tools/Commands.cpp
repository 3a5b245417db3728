#include "Commands.h"

void AddCommands(Program& ioProgram)
{
    AddSettingsCommands(ioProgram);
    AddStatusCommand(ioProgram);
    AddSearchCommand(ioProgram);
    AddPathCommands(ioProgram);
    AddFileCommands(ioProgram);
    AddTextCommands(ioProgram);
    AddIdentifierCommand(ioProgram);
    AddSequenceCommands(ioProgram);
    AddModelCommands(ioProgram);
    AddMessageCommand(ioProgram);
    AddReportCommand(ioProgram);
}
