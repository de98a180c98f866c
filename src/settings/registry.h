// Values of the user's registry key.
#pragma once

#include <windows.h>

// Reads a value of whatever type into data; *size is data's room in bytes, then the value's length,
// which may be 0. 1 read; 0 when the value is missing or has no room.
int ReadUserValue(const char *name, void *data, DWORD *size);

// 1 when the user's key exists, else 0.
int HasUserKey();

// Stores a value, creating the key: 1 done, 0 not.
int WriteUserValue(const char *name, DWORD type, const void *data, DWORD size);
