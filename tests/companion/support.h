// What the companion's tests share: an empty data folder, text from UTF-8, the dictionaries' words.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/texts.h"
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

bool RemoveDataFolder(const std::string &name);  // an empty one

// Internal code, packed, from UTF-8; characters outside ASCII and the Lao block are left out.
std::string CodeOf(const std::string &utf8);

std::string Packed(std::string text);
std::string Recoded(const std::string &text, LONG code);

// The shipped dictionary as the test reads it: the lines that are no comments, packed.
std::vector<std::string> MainWords();

// The user dictionary by its numbers.
std::vector<std::string> UserWords();
