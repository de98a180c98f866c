// Values of the user's registry key.
#pragma once

#include <windows.h>

// Reads a value of whatever type into data. The bytes read; 0 when it is missing, empty or longer
// than size.
DWORD ReadUserValue(const char *name, void *data, DWORD size);

// 1 when the user's key exists, else 0.
int HasUserKey();

// Stores a value, creating the key: 1 done, 0 not.
int WriteUserValue(const char *name, DWORD type, const void *data, DWORD size);
