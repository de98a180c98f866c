// What a conversion reports: the number of its failure, why a pass must begin again, and notes for
// the user.
#pragma once

// Why the driver begins again with a larger size.
enum RestartReason { kSound, kTagBufferFull, kStylesFull, kTextBufferFull };

enum { kNotesSize = 4000 };

struct ConversionReport {
    int error;  // 0 while nothing has failed, else the number of the last failure site
    RestartReason restart;
    char *notes;  // kNotesSize bytes from the first note on, lines between CR LF
};
extern ConversionReport gReport;

// Stores a failure's number and gives result back, so that a failing site reports and returns in
// one step.
int SetConversionError(int result, int number);

// Adds a formatted note (as printf). One that doesn't fit is left out whole; without a format
// nothing happens.
void AddConversionNote(const char *format, ...) __attribute__((format(printf, 1, 2)));

void FreeConversionNotes();
