// The record of a document that is being rewritten: what lasts from its first part to its last. The
// driver (rewrite.h) makes one for each job.
#pragma once

#include "documents/font_names.h"
#include "documents/font_styles.h"
#include "documents/legacy_text.h"
#include "documents/shared_strings.h"
#include "xmlconv/report.h"

enum ThemeFont { kMajorFonts, kMinorFonts, kThemeFonts };

struct Document {
    DocumentJob *job;  // not owned
    ConversionReport report;
    FontMap map;
    FontMapEntry textFont;  // of a plain text, which may not be in the map
    FontNames fonts;
    FontStyles styles;
    SharedStrings strings;
    LegacyTable tables[kLegacyCodes];         // of the codes of legacy fonts
    int themeFonts[kThemeFonts][kFontSlots];  // numbers of FontNames
    const int *partsAbove;  // not owned: of each part, the one that says what it doesn't say
                            // itself, as a layout does for a slide; -1: none
    size_t partCount;       // of these
    unsigned long long convertedCharacters, changedParts;
    unsigned long long pendingCharacters;  // converted ones of a reading that may not count
    DWORD shownPercent;                    // the last one that the host heard of
    bool isRewriting;                      // the reading that finds the styles is over
    bool isRepeating;                      // what is read now has been counted and told before
};

// -1 where there is none.
int PartAbove(const Document *document, int part);

// A failure, with its number; gives false back.
bool FailDocument(Document *document, ConversionFailure failure);

// Ends a reading, whose characters and notes count or don't.
void EndReading(Document *document, bool counts);

// A note for the person who started the job, as printf.
void NoteOfDocument(Document *document, const char *format, ...)
    __attribute__((format(printf, 2, 3)));
