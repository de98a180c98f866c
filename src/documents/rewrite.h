// The rewriting of documents of all formats: what it is given, and what each kind of container does
// with it. The driver (convert.cpp) opens the files and calls this.
#pragma once

#include <cstdio>

#include "documents/walk.h"

// The files of a job. All are opened as bytes by the driver, which closes them.
struct RewriteFiles {
    const char *path;  // of the source, UTF-8
    FILE *input;
    FILE *output;     // null: nothing is written
    uint64_t length;  // of the source, in bytes
};

// Tells the format and does the whole work: false with a failure that is reported. What the output
// has got then is no document.
bool RewriteDocument(Document *document, const RewriteFiles &files);

// Goes through a part to its end, with its new bytes to the file, where there is one.
bool WalkThrough(Walk *walk, FILE *output);

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

// The elements of a format; the caller frees them. False without memory, which is reported.
bool MakeElementsOf(Document *document, DocumentFormat format, ElementIndex *elements);
