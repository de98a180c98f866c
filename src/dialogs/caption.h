// Decorative text in a dialog.
#pragma once

#include <windows.h>

struct CaptionStyle {
    const char *faceName;  // null: "Brush Script MT"
    int height, weight;    // logical units; 0: 48 and 400
    int italic;            // above 0: slanted
    COLORREF color;        // 0: the context's own
};

// Draws a line of text with its top at y: from x on, or in the middle of the window's width where x
// is below 0. Without a text it is the product's name, with a shadow. The context is given back as
// it came.
void PaintCaption(HWND window, HDC context, const char *text, POINT place,
                  const CaptionStyle *style);
