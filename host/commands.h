// The subcommands. Each adds itself to the command line and sets what is to be run; the run's
// result is the exit status: 0 done, 1 something in the input could not be done, 2 wrong usage.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

typedef std::function<int()> Command;

void AddWrapCommand(CLI::App *app, Command *chosen);
void AddCheckCommand(CLI::App *app, Command *chosen);
void AddOptionsCommand(CLI::App *app, Command *chosen);
void AddFontsCommand(CLI::App *app, Command *chosen);
void AddDictCommand(CLI::App *app, Command *chosen);

enum ExitStatus { kDone = 0, kNotDone = 1, kWrongUsage = 2 };

// A part of the input: whole lines, or a piece of a long one.
struct TextPart {
    std::string_view text;
    size_t line, column;  // of its first character, from 1; columns in characters
};

// Handles one part: appends to the output, gives a status.
typedef std::function<int(const TextPart &part, std::string *output)> PartWorker;

// Runs a worker over all files, "-" and no file at all being standard input, and writes what it
// gives to standard output. A part in which the library shows a message is done again line by line,
// so that the message can name its line. The worst status of all; a file that can't be read is told
// and is 1.
int ProcessFiles(const std::vector<std::string> &files, const PartWorker &work);

// Writes to standard output: 0, or 1 with a message when not all could be written.
int WriteOutput(std::string_view text);
