// Fonts and device contexts without a screen. Places are few and fixed, so that a program that
// forgets to give one back fails as it would on Windows, and soon.
#include "drawing/contexts.h"

#include <assert.h>

constexpr int kMaxContexts = 8;
constexpr int kMaxFonts = 256;

struct DrawingState {
    FontRecord fonts[kMaxFonts];
    ContextRecord contexts[kMaxContexts];
};
static DrawingState gDrawing;

// The system's font has a record of its own, which is never given out.
static FontRecord gSystemFont = {{}, true};

ContextRecord *FindContext(HDC context)
{
    for (ContextRecord &known : gDrawing.contexts) {
        if (reinterpret_cast<HDC>(&known) == context && known.window)
            return &known;
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

// Null for a handle that is no living font; the system's own is always one.
static FontRecord *FindFont(HGDIOBJ object)
{
    if (object == &gSystemFont)
        return &gSystemFont;
    for (FontRecord &font : gDrawing.fonts) {
        if (&font == object && font.isUsed)
            return &font;
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

// Black, from the left, on a background: what a context starts with on Windows.
ContextRecord *NewContext(HWND window)
{
    for (ContextRecord &context : gDrawing.contexts) {
        if (context.window)
            continue;
        context = {window, reinterpret_cast<HFONT>(&gSystemFont), 0, TA_LEFT, OPAQUE};
        return &context;
    }
    return nullptr;
}

// The font is the caller's, who gives it back by DeleteObject.
HFONT WINAPI CreateFontIndirectA(const LOGFONTA *font)
{
    for (FontRecord &place : gDrawing.fonts) {
        if (place.isUsed)
            continue;
        place = {*font, true};
        return reinterpret_cast<HFONT>(&place);
    }
    return nullptr;
}

int WINAPI EnumFontFamiliesA(HDC context, LPCSTR, FONTENUMPROCA callback, LPARAM)
{
    return FindContext(context) && callback ? 1 : 0;
}

// Only fonts are selected.
HGDIOBJ WINAPI SelectObject(HDC handle, HGDIOBJ object)
{
    ContextRecord *context = FindContext(handle);
    if (!context || !FindFont(object))
        return nullptr;
    HGDIOBJ before = context->font;
    context->font = static_cast<HFONT>(object);
    return before;
}

// Whether a context would be left with a dead font.
static bool IsSelected(HGDIOBJ object)
{
    for (const ContextRecord &context : gDrawing.contexts) {
        if (context.window && context.font == object)
            return true;
    }
    return false;
}

// A font that is still selected stays, and shows as a leak.
BOOL WINAPI DeleteObject(HGDIOBJ object)
{
    FontRecord *font = FindFont(object);
    if (!font || IsSelected(object))
        return FALSE;
    if (font != &gSystemFont)
        font->isUsed = false;
    return TRUE;
}

// ---- how a text would be drawn; each setter gives the value from before ----

COLORREF WINAPI GetTextColor(HDC handle)
{
    ContextRecord *context = FindContext(handle);
    return context ? context->color : CLR_INVALID;
}

COLORREF WINAPI SetTextColor(HDC handle, COLORREF color)
{
    ContextRecord *context = FindContext(handle);
    if (!context)
        return CLR_INVALID;
    COLORREF before = context->color;
    context->color = color;
    return before;
}

UINT WINAPI SetTextAlign(HDC handle, UINT align)
{
    ContextRecord *context = FindContext(handle);
    if (!context)
        return GDI_ERROR;
    UINT before = context->align;
    context->align = align;
    return before;
}

int WINAPI SetBkMode(HDC handle, int mode)
{
    ContextRecord *context = FindContext(handle);
    if (!context)
        return 0;
    int before = context->backgroundMode;
    context->backgroundMode = mode;
    return before;
}

// Says whether it could be drawn, and keeps nothing.
BOOL WINAPI TextOutA(HDC handle, int, int, LPCSTR text, int length)
{
    ContextRecord *context = FindContext(handle);
    if (!context || !text || length < 0)
        return FALSE;
    assert(FindFont(context->font));  // DeleteObject leaves a selected font
    return TRUE;
}

// The system's font isn't counted: nobody made it.
DWORD CountDrawingObjects()
{
    DWORD count = 0;
    for (const FontRecord &font : gDrawing.fonts)
        count += font.isUsed;
    for (const ContextRecord &context : gDrawing.contexts)
        count += context.window != nullptr;
    return count;
}
