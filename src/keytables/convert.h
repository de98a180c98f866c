// Text in the internal code to text under a key table, in place: what isn't Lao passes through,
// each syllable becomes what the table gives for it, the repeat sign and the ellipsis get a text of
// their own.
#pragma once

#include <windows.h>

#include "keytables/key_table.h"

// text is NUL-terminated in a buffer of size bytes. 1 when the result fits with one byte to spare
// beside its terminator; 0 after a message, text then holds what fitted. Where the text's breaks
// can't be found (WrapText tells why) the result is 0 too. A sort table gets the sequence that the
// option "s" asks for.
//
// One thing lives on from call to call: the text of the last syllable, which a repeat sign at the
// start of the next text repeats.
int ConvertByKeyTable(char *text, DWORD size, KeyTable *table);

// The same for a table that must not change.
int ConvertByConstantTable(char *text, DWORD size, const KeyTable *table);
