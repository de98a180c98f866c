// Control files: key tables written by hand, read from the data folder. The work tables of sort
// keys and romanization are filled from them.
#pragma once

#include <cstddef>

#include "keytables/key_table.h"

enum { kControlNameRoom = 128, kRomanFontRoom = 128 };

// Reads a control file of the data folder into table: 1 when it was read to its end; 0 after a
// message when there is no such file (table is untouched), when a value is longer than 7 bytes or
// when anything stands behind the 200th entry (what was read so far stays, the total is set). A
// file without a Sequence line leaves the table's sequence.
int LoadControlFile(KeyTable *table, const char *file, TableType type);

// The same for a file's content, `size` bytes, which a host has read itself.
int LoadControlText(KeyTable *table, const char *content, size_t size, TableType type);

// The message of a control file that isn't there. Always 0.
int TellMissingControlFile();

// The font in which romanized text is to be shown: "Arial" until a Sequence line of any control
// file names another one.
const char *RomanFontName();
void SetRomanFontName(const char *name);
