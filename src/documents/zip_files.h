// Archives over files that are open already: one to read from, and one to write to, so that the old
// archive stays whole while the new one is made.
#pragma once

#include <cstdio>

#include <zip.h>

struct ZipFiles {
    FILE *input;   // the old archive
    FILE *output;  // receives the new one; null: it can't be changed
    zip_error_t error;
};

// Opens the archive; null, with the number of the library's error in *error. Both files stay the
// caller's, and `files` has to live as long as the archive.
zip_t *OpenArchive(ZipFiles *files, int *error);
