// The table that an operation works on: a control file's, where a host has named one that can be
// read, else the built-in one. It is filled at its first use.
#pragma once

#include "keytables/control_file.h"
#include "keytables/key_table.h"

constexpr char kUnloadedName[] = "Empty";  // of a table that is still to be filled

struct WorkTable {
    KeyTable table;
    char fileName[kControlNameRoom];  // empty: the built-in table
};

// Marks the table unloaded and notes the control file for it; file, which may be null, is trimmed
// in place. A name that is too long shows the message of a missing file and leaves none noted.
void NameControlFile(WorkTable *work, char *file);

// Fills an unloaded table: 1 when it was filled from builtIn, else 0. A file that fails shows its
// message and isn't tried again.
int FillWorkTable(WorkTable *work, const KeyTable *builtIn);

// Fills a table from a control file's content: 1 done; 0 after the message of a bad one, the table
// is then the built-in one.
int LoadWorkTable(WorkTable *work, const char *content, size_t size, const KeyTable *builtIn);
