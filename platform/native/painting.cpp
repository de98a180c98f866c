// Painting without a screen: device contexts and fonts are counted records, and the texts that a
// window's painter writes are kept until its next WM_PAINT, for tests to read.
#include "hooks.h"
#include "window_slots.h"

#include <runtime.h>
#include <string.h>

constexpr int kMaxContexts = 8;
constexpr int kMaxFonts = 256;
constexpr int kMaxDrawn = 16;

struct FontRecord {
    LOGFONTA font;
    int isUsed;
};

struct ContextRecord {
    HWND window;  // none: a free place
    HFONT font;   // none: the system's
    COLORREF color;
    UINT align;
    int backgroundMode;
};

struct PaintState {
    FontRecord fonts[kMaxFonts];
    ContextRecord contexts[kMaxContexts];
    HWND drawnIn;  // the window that was painted last
    DrawnTextRecord drawn[kMaxDrawn];
    int drawnCount;
};
static PaintState gPaint;

// A font's handle is the address of its record; the system's font has a record of its own.
static FontRecord gSystemFont = {{}, 1};

static ContextRecord *FindContext(HDC context)
{
    for (ContextRecord &known : gPaint.contexts) {
        if ((HDC)&known == context && known.window)
            return &known;
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

static FontRecord *FindFont(HGDIOBJ object)
{
    if (object == &gSystemFont)
        return &gSystemFont;
    for (FontRecord &font : gPaint.fonts) {
        if (&font == object && font.isUsed)
            return &font;
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

HDC WINAPI BeginPaint(HWND window, LPPAINTSTRUCT paint)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return nullptr;
    *paint = {};
    GetClientRect(window, &paint->rcPaint);
    record->needsPaint = 0;
    for (ContextRecord &context : gPaint.contexts) {
        if (context.window)
            continue;
        context = {window, (HFONT)&gSystemFont, 0, TA_LEFT, OPAQUE};
        paint->hdc = (HDC)&context;
        gPaint.drawnIn = window;
        gPaint.drawnCount = 0;
        return paint->hdc;
    }
    return nullptr;
}

BOOL WINAPI EndPaint(HWND, const PAINTSTRUCT *paint)
{
    ContextRecord *context = FindContext(paint->hdc);
    if (context)
        *context = {};
    return TRUE;
}

static void PaintInside(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record || !(record->style & WS_VISIBLE))
        return;
    if (record->needsPaint)
        SendMessageA(window, WM_PAINT, 0, 0);
    record = FindWindowRecord(window);
    HWND child = record && record->firstChild ? record->firstChild->handle : nullptr;
    while (child) {
        PaintInside(child);
        child = GetWindow(child, GW_HWNDNEXT);
    }
}

BOOL WINAPI UpdateWindow(HWND window)
{
    if (!FindWindowRecord(window))
        return FALSE;
    if (IsWindowVisible(window))
        PaintInside(window);
    return TRUE;
}

HFONT WINAPI CreateFontIndirectA(const LOGFONTA *font)
{
    for (FontRecord &place : gPaint.fonts) {
        if (place.isUsed)
            continue;
        place = {*font, 1};
        return (HFONT)&place;
    }
    return nullptr;
}

// Only fonts are selected.
HGDIOBJ WINAPI SelectObject(HDC handle, HGDIOBJ object)
{
    ContextRecord *context = FindContext(handle);
    if (!context || !FindFont(object))
        return nullptr;
    HGDIOBJ before = context->font;
    context->font = (HFONT)object;
    return before;
}

static int IsSelected(HGDIOBJ object)
{
    for (const ContextRecord &context : gPaint.contexts) {
        if (context.window && context.font == object)
            return 1;
    }
    return 0;
}

// A font that is still selected stays, and shows as a leak.
BOOL WINAPI DeleteObject(HGDIOBJ object)
{
    FontRecord *font = FindFont(object);
    if (!font || IsSelected(object))
        return FALSE;
    if (font != &gSystemFont)
        font->isUsed = 0;
    return TRUE;
}

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

BOOL WINAPI TextOutA(HDC handle, int x, int y, LPCSTR text, int length)
{
    ContextRecord *context = FindContext(handle);
    FontRecord *font = context ? FindFont(context->font) : nullptr;
    if (!font || length < 0)
        return FALSE;
    if (gPaint.drawnIn != context->window || gPaint.drawnCount == kMaxDrawn)
        return TRUE;
    DrawnTextRecord *drawn = &gPaint.drawn[gPaint.drawnCount++];
    *drawn = {"", x, y, context->color, context->align, context->backgroundMode, font->font};
    size_t kept = (size_t)length < sizeof drawn->text ? (size_t)length : sizeof drawn->text - 1;
    memcpy(drawn->text, text, kept);
    return TRUE;
}

int DrawnText(HWND window, int number, DrawnTextRecord *drawn)
{
    if (gPaint.drawnIn != window || number < 0 || number >= gPaint.drawnCount)
        return 0;
    *drawn = gPaint.drawn[number];
    return 1;
}

DWORD WINAPI GetGuiResources(HANDLE, DWORD kind)
{
    if (kind == GR_USEROBJECTS)
        return CountWindows() + CountHooks();
    DWORD count = 0;
    for (const FontRecord &font : gPaint.fonts)
        count += font.isUsed != 0;
    for (const ContextRecord &context : gPaint.contexts)
        count += context.window != nullptr;
    return count;
}
