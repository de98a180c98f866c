// Code page 1252, in which the text of legacy fonts is stored, and pages and RTF are written.
// Without best fit: a letter that is only like one of its letters is none of them.
#pragma once

#include <windows.h>

// The five bytes without a character stand for themselves.
WCHAR CharacterOf1252(unsigned char byte);

// The byte of a character; -1 for one that the code page doesn't have.
int ByteOf1252(WCHAR character);
