// Decorative text, which dialogs draw while they are painted: one font made for the call, and the
// context's settings put back behind it, so that a dialog can draw more than one line.
#include "dialogs/caption.h"

#include <cstdio>
#include <cstring>

constexpr char kProductName[] = "Orvel";
constexpr char kScriptFace[] = "Brush Script MT";
constexpr COLORREF kShadowColor = 0xFFC000;

static HFONT MakeFont(const CaptionStyle *style)
{
    LOGFONTA font = {};
    font.lfHeight = style->height ? style->height : 48;
    font.lfWeight = style->weight ? style->weight : FW_NORMAL;
    font.lfItalic = style->italic > 0;
    font.lfPitchAndFamily = FF_ROMAN;
    snprintf(font.lfFaceName, sizeof font.lfFaceName, "%s",
             style->faceName ? style->faceName : kScriptFace);
    return CreateFontIndirectA(&font);
}

// The name once more, to the right, below and to the right below of its place.
static void DrawShadow(HDC context, const char *text, POINT place)
{
    int length = int(strlen(text));
    SetTextColor(context, kShadowColor);
    TextOutA(context, place.x, place.y + 1, text, length);
    TextOutA(context, place.x + 1, place.y, text, length);
    TextOutA(context, place.x + 1, place.y + 1, text, length);
}

static LONG MiddleOf(HWND window)
{
    RECT client = {};
    GetClientRect(window, &client);
    return client.right / 2;
}

static void DrawTextLine(HDC context, const char *text, POINT place, COLORREF color)
{
    int modeBefore = SetBkMode(context, TRANSPARENT);
    if (!text)
        DrawShadow(context, kProductName, place);
    if (!text)
        text = kProductName;
    SetTextColor(context, color);
    TextOutA(context, place.x, place.y, text, int(strlen(text)));
    SetBkMode(context, modeBefore);
}

void PaintCaption(HWND window, HDC context, const char *text, POINT place,
                  const CaptionStyle *style)
{
    COLORREF colorBefore = GetTextColor(context);
    HFONT font = MakeFont(style);
    HGDIOBJ fontBefore = SelectObject(context, font);
    bool isCentred = place.x < 0;
    UINT alignBefore = SetTextAlign(context, isCentred ? TA_CENTER : TA_LEFT);
    if (isCentred)
        place.x = MiddleOf(window);
    DrawTextLine(context, text, place, style->color ? style->color : colorBefore);
    SetTextColor(context, colorBefore);
    SetTextAlign(context, alignBefore);
    SelectObject(context, fontBefore);
    DeleteObject(font);
}
