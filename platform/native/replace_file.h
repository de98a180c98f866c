// Replacing files as a whole, by native paths: the work below runtime.h's pair of functions.
#ifndef ORVEL_PLATFORM_NATIVE_REPLACE_FILE_H
#define ORVEL_PLATFORM_NATIVE_REPLACE_FILE_H

#include <stdio.h>

// As BeginReplaceFile and EndReplaceFile. The file's own path is remembered between the two. Both
// leave the reason of a failure in errno.
FILE *BeginReplaceNative(const char *native);
int EndReplaceNative(FILE *file, int keep);

#endif
