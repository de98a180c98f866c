// The parts of a package: what each is, how it is read, and what it has to do with others. The road
// of packages (package.cpp) asks before it begins.
#pragma once

#include "documents/deflate.h"
#include "documents/xml_file.h"
#include "documents/zip_files.h"

struct PackagePart {
    zip_stat_t entry;  // its name lives as long as the archive
    bool isXml;        // what a walk goes through
    int round;         // in which it is read for styles, from 1; 0: in none
    bool hasChanged;
    int folder;  // a number of its folder
};
constexpr int kStyleRounds = 3;

struct Package {
    Document *document;
    ZipFiles files;
    zip_t *archive;
    PackagePart *parts;  // owned
    int *above;          // owned: see PartAbove
    size_t count;
    ElementIndex elements;
    Bytes types;         // the part that tells the types of all others; empty: OpenDocument
    uint64_t all, done;  // bytes of XML of all readings, and of those that are over
};

// Gives the failure to the document; false. The second for an error of the zip library.
bool FailPackage(Package *package, ConversionFailure failure);
ConversionFailure FailureOfZip(int error);

// Lists the parts of an archive of so many bytes, says what the document is, and finds the parts
// with styles. False with a failure that is reported.
bool ListParts(Package *package, uint64_t length);

// One part that is being read.
struct PartReader {
    Package *package;
    const PackagePart *part;
    zip_file_t *file;  // owned
    Unpacker
        *unpacker;      // owned; null where the part isn't packed, or in a way of the zip library's
    uint64_t position;  // bytes that were read
    uint32_t checksum;  // of them
};
bool OpenPart(Package *package, const PackagePart &part, PartReader *reader);
void ClosePart(PartReader *reader);

// A source of a walk, whose context is the reader.
size_t ReadPart(void *context, char *buffer, size_t size);

enum { kPartNameSize = 512 };  // bytes, terminator included; nobody's are so long

// The part of a name, without regard to the case of A to Z; null when there is none.
PackagePart *FindPart(Package *package, const char *name);

// Reads a part that isn't large into a block.
bool ReadSmallPart(Package *package, const PackagePart &part, Bytes *bytes);
