// What the person is told, on standard error: the library's messages with the place in the input
// that they are about, and the command's own.
#pragma once

#include <string>

// Where the work is. Belongs to files.cpp, which walks through the input; others read it, or name a
// file of their own before they hand it to the library.
struct InputPlace {
    std::string file;  // empty: the command itself
    size_t line;       // from 1; 0 where no line is meant
};
extern InputPlace gPlace;

// Writes a line for the current place.
void TellHere(const std::string &text);

// Writes what the library has said since the last time, each text for the current place. The number
// of texts.
size_t TellMessages();

// Writes a line of the command, and gives `status`.
int Tell(const std::string &text, int status);

// Starts the library; false after telling why it can't be.
bool Start();
