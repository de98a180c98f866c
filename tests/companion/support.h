// What the companion's tests share: files of the data folder, texts as bytes, text from UTF-8.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "vesk.h"

#define KAA "ກາ"  // 161 190
#define KHI "ຂິ"   // 162 242
#define NAM "ນ້ຳ"  // 173 213

// Every test of this fixture starts and ends with an empty data folder and nothing loaded.
class CleanDictionaries : public testing::Test
{
  protected:
    void SetUp() override;
    void TearDown() override { SetUp(); }
};

// A path in the data folder, with backslashes.
std::string DataPath(const std::string &name);
void WriteDataFile(const std::string &name, const std::string &content);
std::string ReadDataFile(const std::string &name);
void RemoveDataFile(const std::string &name);
bool RemoveDataFolder(const std::string &name);  // an empty one

// Internal code, packed, from UTF-8; U+200B is the break mark, other characters outside ASCII and
// the Lao block are left out.
std::string CodeOf(const std::string &utf8);

std::string Packed(std::string text);
std::string Recoded(const std::string &text, LONG code);

// Bytes as numbers with blanks between them, for messages.
std::string Show(const std::string &code);

std::vector<std::string> Lines(const std::string &text);
std::string ReadCorpus(const char *name);
inline const char *const kCorpusFiles[] = {"udhr.txt", "cldr_annotations.txt", "web_phrases.txt"};

// The shipped dictionary, as the test reads it: the lines that are no comments, in UTF-8 and
// packed.
std::vector<std::string> MainLines();
std::vector<std::string> MainWords();

// The user dictionary by its numbers.
std::vector<std::string> UserWords();

// Numbers that come in the same order in every run.
uint32_t NextRandom();
