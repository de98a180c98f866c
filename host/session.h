// The command as a host of the library: start-up, and message boxes that end on standard error.
#pragma once

#include <string>

// Starts the library: puts up the window that it looks for and registers the install folder where
// none is. False, with a message on standard error, when it can't be started.
bool StartLibrary();

// A registered font whose text is the internal code or the byte form of Unicode text: what all text
// of the command goes through.
struct TextFont {
    std::string name;
    int index;  // as the Unicode operations take it
};

// False, with a message, when no such font is registered.
bool FindTextFont(TextFont *font);

// Message boxes of the library are written to standard error behind this place, and counted. While
// boxes are held back they are only counted.
struct MessagePlace {
    std::string file;
    size_t line;  // 0: none to name
    bool heldBack;
    size_t count;
};
extern MessagePlace gMessages;
