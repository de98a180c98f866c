// A started library for tests that link its objects: the keyboard manager's window stands, the
// install folder is the program's own, the data folder and the registry are empty.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "orvel.h"

// Starts the library once; every test begins with the default options, no data files of its own and
// the companion's dictionaries unloaded.
class StartedLibrary : public testing::Test
{
  protected:
    void SetUp() override;
    void TearDown() override;
};

// Puts up the window of the keyboard manager, or takes it down.
void ShowKeyboardManager();
void HideKeyboardManager();

// The folder of the test program, with backslashes; also what it registers as install folder.
std::string ProgramFolder();
void RegisterInstallFolder(const std::string &folder);

// Writes a file into the data folder, or removes one.
void WriteDataFile(const char *name, const std::string &content);
void RemoveDataFile(const char *name);
std::string ReadDataFile(const char *name);

// UTF-8 words as a dictionary of the data folder, in place of the shipped one.
void ReplaceDictionary(const char *name, const std::string &lines);

// Bytes of the internal code, drawn: "161 190 | 173" with | for the break mark.
std::string ShowCode(const std::string &code);
