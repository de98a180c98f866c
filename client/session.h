// The library's start for a program that brings it along: the command, the benchmarks, the fuzz
// targets, the bindings. Nothing is asked of the person, nothing is written, and what the library
// would show in a box comes as a value.
#pragma once

#include <string>
#include <vector>

// Starts the library: puts up the window that it looks for, and gives it the folder in which it
// stands as install folder where none with a companion is registered. Empty when it is started,
// else the reason in words.
std::string StartLibrary();

// The texts of the boxes that the library has shown since the last call, in their order. No box
// waits for an answer once the library is started.
std::vector<std::string> TakeMessages();

// The name of a registered font whose text is the internal code, which the operations that take a
// font's name are given. Empty when there is none: the user has taken them all out of the list.
std::string FindTextFont();

// A path as the system writes it. The library's have backslashes; a backslash counts as a slash.
std::string SystemPath(std::string path);

// What is wrong with a file of the data folder that could not be saved: its path, or why there is
// no data folder.
std::string DescribeUnsaved(const char *fileName);

// The same for an option that could not be saved: the registry's place, or that there is none.
std::string DescribeUnsavedOptions();

// From here to the end of the process no other one reads the options or the list of fonts in order
// to change them: called before StartLibrary by whoever will change them, so that two changes at
// the same time don't undo each other. Where nothing can be locked the change itself will fail.
void LockSettings();
