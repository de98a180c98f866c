// A part of a new package on its way into the archive: walked through, packed, and counted as it
// goes. The archive asks for it block by block, so that no part has to be held.
#pragma once

#include "documents/package_parts.h"

struct PackedPart {
    Package *package;
    const PackagePart *part;
    PartReader reader;
    Walk walk;
    bool isPacked;      // else its bytes go into the archive as they are
    Packer *packer;     // owned
    uint64_t size;      // bytes of the new part so far
    uint32_t checksum;  // of them
    bool hasEnded;
};

// Begins the walk of a part, as the road of packages does it for all its readings.
bool StartPart(Package *package, const PackagePart &part, PartReader *reader, Walk *walk);

// Puts a part that changes in the old one's place in the archive, with its time and its way of
// packing. False with a failure that is reported.
bool ReplacePart(Package *package, zip_t *archive, const PackagePart &part);
