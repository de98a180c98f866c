// Fonts and device contexts: counted records, whose addresses are their handles. Nothing is drawn;
// a context only knows how a text would be. The tests' own TextOutA reads that from the record.
#ifndef ORVEL_PLATFORM_NATIVE_DRAWING_CONTEXTS_H
#define ORVEL_PLATFORM_NATIVE_DRAWING_CONTEXTS_H

#include <windows.h>

struct FontRecord {
    LOGFONTA font;  // zeroed: the system's
    bool isUsed;    // from CreateFontIndirectA to DeleteObject
};

struct ContextRecord {
    HWND window;         // that is being painted; null: a free place
    HFONT font;          // the selected one, always a living FontRecord
    COLORREF color;      // of the text
    UINT align;          // TA_…: what the point of a TextOutA means
    int backgroundMode;  // OPAQUE or TRANSPARENT
};

// A context with the system's font and colours; null when there are too many.
ContextRecord *NewContext(HWND window);

// The record of a living handle; null for any other value, and the last error is set then.
ContextRecord *FindContext(HDC context);

// How many fonts and contexts there are.
DWORD CountDrawingObjects();

#endif
