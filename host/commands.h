// The subcommands, and what they read and write. main.cpp calls each Add… function once, before the
// command line is read: it describes the subcommand's options to the option parser and says what is
// to be run when this subcommand was asked for. Nothing of the library runs before that.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

// What the command line has chosen; its result is the exit status.
typedef std::function<int()> Command;

void AddWrapCommand(CLI::App *app, Command *chosen);
void AddCheckCommand(CLI::App *app, Command *chosen);
void AddOptionsCommand(CLI::App *app, Command *chosen);
void AddFontsCommand(CLI::App *app, Command *chosen);
void AddDictCommand(CLI::App *app, Command *chosen);
void AddSortCommand(CLI::App *app, Command *chosen);
void AddRomanizeCommand(CLI::App *app, Command *chosen);
void AddEmailCommand(CLI::App *app, Command *chosen);
void AddConvertCommand(CLI::App *app, Command *chosen);
void AddRecodeCommand(CLI::App *app, Command *chosen);

// The worse of two is the greater one. Not done: something in the input could not be done, and
// standard error says what.
enum ExitStatus { kDone = 0, kNotDone = 1, kWrongUsage = 2 };

// A part of the input: whole lines, or a piece of a long one.
struct TextPart {
    std::string_view text;  // UTF-8 as it came; the reader's, valid while the worker runs
    size_t line, column;    // of its first character, from 1; columns in characters
};

// The text of a part without the byte order mark that some editors write in front of a file.
std::string_view WithoutByteOrderMark(const TextPart &part);

// Handles one part: appends to the output, gives a status.
typedef std::function<int(const TextPart &part, std::string *output)> PartWorker;

// Run a worker over all files, "-" and no file at all being standard input, and write what it gives
// to standard output. The worst status of all; a file that can't be read is told and is 1. Messages
// of the library name file and line. ProcessParts hands over many lines at once; where the library
// shows a message it does the part again line by line, so its worker must give the same for the
// same text. ProcessLines hands over each line with its end; of one that is longer than a part the
// column tells which piece it is.
int ProcessParts(const std::vector<std::string> &files, const PartWorker &work);
int ProcessLines(const std::vector<std::string> &files, const PartWorker &work);

// Writes to standard output: 0, or 1 with a message when not all could be written.
int WriteOutput(std::string_view text);
