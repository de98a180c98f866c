// The files of a job, as all formats read and write them.
#pragma once

#include <cstdio>

#include "documents/document.h"

// All are opened as bytes by the driver, which closes them.
struct DocumentFiles {
    const char *path;  // of the source, UTF-8
    FILE *input;
    FILE *output;     // null: nothing is written
    uint64_t length;  // of the source, in bytes
};

// The readings of a file, and a source of scanners that reads it.
struct FileReader {
    Document *document;
    FILE *file;
    uint64_t done, all;  // bytes, of all readings
};
size_t ReadInput(void *context, char *buffer, size_t size);

// Writes what is ready, once it is so many bytes, to the file, where there is one: false with a
// failure that is reported.
bool WriteReady(Document *document, Bytes *output, FILE *target, size_t least);

// Called for each block that is read: tells the host how far the work is, and asks it whether to
// stop. False to stop, with the failure reported. `all` is in bytes of all readings.
bool GoOn(Document *document, uint64_t done, uint64_t all);
