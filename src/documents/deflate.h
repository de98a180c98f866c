// Deflate, as parts of archives are packed, both ways and block by block, so that no part has to be
// held. Two libraries do it: deflate_isal.cpp where the system has the quick one for its processor,
// deflate_zlib.cpp everywhere else. What comes out of the one goes into the other.
#pragma once

#include "xmlconv/reader.h"

struct Packer;
struct Unpacker;

// Packs what the source gives; null without memory. The source is read until it gives nothing.
Packer *StartPacking(const DocumentSource &plain);
void StopPacking(Packer *packer);

// Fills the buffer with packed bytes and gives their number; less than `size` only at the end.
size_t ReadPacked(Packer *packer, char *buffer, size_t size);

// Unpacks what the source gives; null without memory.
Unpacker *StartUnpacking(const DocumentSource &packed);
void StopUnpacking(Unpacker *unpacker);

// Some plain bytes, 0 at the end; -1 where the packed ones are damaged or end too early.
constexpr size_t kDamagedBytes = size_t(-1);
size_t ReadUnpacked(Unpacker *unpacker, char *buffer, size_t size);

// The checksum that archives have of plain bytes, gone on with; 0 before the first of them.
uint32_t AddToChecksum(uint32_t checksum, const char *bytes, size_t count);
