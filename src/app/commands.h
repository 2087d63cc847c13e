#pragma once

struct CommandLine;
struct ProgramFolder;
class Termination;

// Does what the command line asks for in place of publishing, and returns the exit status.
[[nodiscard]] int RunCommand(const CommandLine& commandLine, const ProgramFolder& folder,
                             Termination& termination);
