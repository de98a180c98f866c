// What the tests of the key tables share: a started library with a font of the internal code and
// the built-in tables, the shipped dictionary, short calls of the operations.
#pragma once

#include <string>
#include <vector>

#include "keytables/key_table.h"
#include "support/corpus.h"
#include "support/guarded.h"
#include "support/message_boxes.h"
#include "support/started_library.h"

constexpr char kTooLong[] = "The specified control file contains illegal entries or is too long";
constexpr char kNoFile[] = "The specified control file does not exist";
constexpr char kCannotConvert[] = "Cannot complete converting Lao text, selection is too large";
constexpr char kCannotProcess[] = "Cannot process Lao text, selection is too large";

constexpr char kInternal[] = "Internal";  // a font of code 0
constexpr char kFile[] = "test.key";      // a control file of the data folder

// Begins with no syllable in memory.
class KeyTables : public StartedLibrary
{
  protected:
    void SetUp() override;
    void TearDown() override;
};

// The shipped main dictionary in the internal code, in the order of its file.
const std::vector<std::string> &DictionaryWords();

// Results as text; a call that gives 0 gives "failed: " and what it left.
std::string KeyOf(const std::string &code, DWORD size = 4096);
std::string RomanOf(const std::string &code, DWORD size = 4096);
std::string EncodedOf(const std::string &code, DWORD *state, DWORD size = 4096);
std::string DecodedOf(const std::string &text, DWORD *state, DWORD size = 4096);

int LoadSortFile(const std::string &content);
int LoadRomanFile(const std::string &content);
constexpr char kEmptySections[] = "\nCluster\nVowel\nFinal\nTone\nChange\nNumber\n";

// A control file that gives the table again, with another sequence.
std::string ControlFileOf(const KeyTable &table, const std::string &sequence);

void ForgetLastWord();

struct TextRow {
    const char *text;  // UTF-8
    const char *result;
};
void ExpectRomanized(std::initializer_list<TextRow> rows);
