// What a conversion reports: the number of its failure, and notes for the user. Every file of the
// converter writes here; the driver shows both at the end.
#pragma once

#include <cstddef>

#include "orvel.h"

enum { kNotesSize = 4000 };  // bytes of the notes, terminator included

struct ConversionReport {
    int error;              // a ConversionFailure; 0 while nothing has failed, else the last one
    char *notes;            // owned, kNotesSize bytes; null before the first note. CR LF between
    size_t notesOfReading;  // where those of the current reading begin, see AddRestartNote
};

// Stores a failure's number and gives result back, so that a failing site reports and returns in
// one step.
int SetConversionError(ConversionReport *report, int result, ConversionFailure number);

// Adds a formatted note (as printf). One that doesn't fit is left out whole; with a null format
// nothing happens.
void AddConversionNote(ConversionReport *report, const char *format, ...)
    __attribute__((format(printf, 2, 3)));

// Notes that a buffer had to grow, format being a note with one number, the new size. Users know
// such a note from converters that begin the document again then: whatever was noted of the
// document so far is noted once more behind it.
void AddRestartNote(ConversionReport *report, const char *format, size_t size);

void FreeConversionNotes(ConversionReport *report);
