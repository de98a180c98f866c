// A started library for tests that link its objects: the keyboard manager's window stands, the
// install folder is the program's own, the data folder and the registry are empty.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "orvel.h"
#include "support/texts.h"

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

// A font list in place of the default one: the number of its records.
int ReplaceFonts(const std::string &lines);

// UTF-8 words as a dictionary of the data folder, in place of the shipped one.
void ReplaceDictionary(const char *name, const std::string &lines);
