// Values of the user's registry key.
#pragma once

#include <windows.h>

// Reads a value of whatever type into data; *size is data's room in bytes, then the value's length,
// which may be 0. 1 read; 0 when the value is missing or has no room.
int ReadUserValue(const char *name, void *data, DWORD *size);

// 1 when the user's key exists, else 0.
int HasUserKey();

// The number of a value; `standard` when it can't be read.
DWORD ReadUserNumber(const char *name, DWORD standard);

// Stores a number where the key exists; a setting that can't be kept is lost without a word.
void KeepUserNumber(const char *name, DWORD number);

// Stores a value, creating the key: 1 done, 0 not.
int WriteUserValue(const char *name, DWORD type, const void *data, DWORD size);
