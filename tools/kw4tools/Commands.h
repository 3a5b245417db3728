#pragma once

class Program;

// Adds all commands to the program.
void AddCommands(Program& ioProgram);

// Each adds a family of commands to the program.
void AddSettingsCommands(Program& ioProgram);  // settings
void AddStatusCommand(Program& ioProgram);     // status
void AddSearchCommand(Program& ioProgram);     // search
void AddPathCommands(Program& ioProgram);      // find, split, env, expand
void AddFileCommands(Program& ioProgram);      // check, read, write
void AddIdentifierCommand(Program& ioProgram); // id
void AddSequenceCommands(Program& ioProgram);  // interval, ids
void AddModelCommands(Program& ioProgram);     // schema, container, classes
void AddMessageCommand(Program& ioProgram);    // message
void AddTextCommands(Program& ioProgram);      // text
void AddReportCommand(Program& ioProgram);     // report
