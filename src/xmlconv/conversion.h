// The record of one conversion: all that it keeps from its first document part to its last. The
// driver (convert.h) makes one for each call; what needs only a part of it gets that part. A
// document of several parts has one record, so that all of them know its styles.
#pragma once

#include <cstddef>

#include "orvel.h"
#include "xmlconv/fast_text.h"
#include "xmlconv/font_map.h"
#include "xmlconv/report.h"
#include "xmlconv/styles.h"

// Sizes of what grows with a document, by doubling, and of the block that is read at a time.
struct ConversionSizes {
    size_t tag, text;  // bytes of the buffers for one tag and for one text, above kSpareBytes
    int styles;        // styles of their table
    size_t block;      // bytes; does not grow
};

constexpr ConversionSizes kFirstSizes = {
    .tag = 1024, .text = 128000, .styles = 256, .block = 256 * 1024};

enum { kSpareBytes = 16 };  // of a buffer that count as full

struct Conversion {
    DocumentJob *job;  // not owned: fonts are counted there, and its callbacks are called
    ConversionReport report;
    FontMap fonts;
    StyleState styles;
    TextMemory *memory;     // owned, of the fast road of text
    TagRecord *spare;       // owned with its parents: records of closed tags, for others to open
    ConversionSizes sizes;  // of the buffers as they are; those of the styles stand in `styles`
    char *tagSource;        // owned, sizes.tag bytes: a tag as it stands in the document
    char *tagText;          // owned, sizes.tag bytes: a tag as it is written
    char *textSource;       // owned, sizes.text bytes: a text as it stands in the document
    TextRoom room;          // sizes.text bytes: a text as it is written
    DWORD shownPercent;     // the last one that the job heard of
};

// Takes what a conversion needs: 1, or 0 with a failure that is reported. The caller has zeroed the
// record and may have read its font map. EndConversion frees all in either case.
int StartConversion(Conversion *conversion, DocumentJob *job, const ConversionSizes &sizes);
void EndConversion(Conversion *conversion);

// Doubles the buffers of tags or of texts, notes it, and keeps what the source buffer holds: 1, or
// 0 with a failure that is reported, and all buffers are as they were.
int GrowTagBuffers(Conversion *conversion);
int GrowTextBuffers(Conversion *conversion);

// The sizes that the conversion has now.
ConversionSizes SizesOf(const Conversion *conversion);
