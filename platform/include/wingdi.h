// Fonts and device contexts. Nothing is drawn.
#ifndef ORVEL_PLATFORM_WINGDI_H
#define ORVEL_PLATFORM_WINGDI_H

#include "windef.h"

#define LF_FACESIZE 32
#define FW_NORMAL 400
#define DEFAULT_CHARSET 1
#define TRUETYPE_FONTTYPE 4
#define VARIABLE_PITCH 2
#define FF_ROMAN 0x10
#define TA_LEFT 0
#define TA_RIGHT 2
#define TA_CENTER 6
#define TRANSPARENT 1
#define OPAQUE 2
#define CLR_INVALID 0xFFFFFFFF
#define GDI_ERROR 0xFFFFFFFF
#define RGB(red, green, blue)                                                                      \
    ((COLORREF)((BYTE)(red) | ((DWORD)(BYTE)(green) << 8) | ((DWORD)(BYTE)(blue) << 16)))

typedef struct tagLOGFONTA {
    LONG lfHeight, lfWidth, lfEscapement, lfOrientation, lfWeight;
    BYTE lfItalic, lfUnderline, lfStrikeOut, lfCharSet;
    BYTE lfOutPrecision, lfClipPrecision, lfQuality, lfPitchAndFamily;
    CHAR lfFaceName[LF_FACESIZE];
} LOGFONTA;

typedef struct tagTEXTMETRICA {
    LONG tmHeight, tmAscent, tmDescent, tmInternalLeading, tmExternalLeading;
    LONG tmAveCharWidth, tmMaxCharWidth, tmWeight, tmOverhang;
    LONG tmDigitizedAspectX, tmDigitizedAspectY;
    BYTE tmFirstChar, tmLastChar, tmDefaultChar, tmBreakChar;
    BYTE tmItalic, tmUnderlined, tmStruckOut, tmPitchAndFamily, tmCharSet;
} TEXTMETRICA;

typedef int(CALLBACK *FONTENUMPROCA)(const LOGFONTA *font, const TEXTMETRICA *metrics, DWORD type,
                                     LPARAM parameter);

ORVEL_API_BEGIN

HFONT WINAPI CreateFontIndirectA(const LOGFONTA *font);
HGDIOBJ WINAPI SelectObject(HDC context, HGDIOBJ object);
BOOL WINAPI DeleteObject(HGDIOBJ object);
COLORREF WINAPI GetTextColor(HDC context);
COLORREF WINAPI SetTextColor(HDC context, COLORREF color);
UINT WINAPI SetTextAlign(HDC context, UINT align);
int WINAPI SetBkMode(HDC context, int mode);
/* Without a screen there are no fonts: the callback hears of none. The result is its last one. */
int WINAPI EnumFontFamiliesA(HDC context, LPCSTR family, FONTENUMPROCA callback, LPARAM parameter);
BOOL WINAPI TextOutA(HDC context, int x, int y, LPCSTR text, int length);

ORVEL_API_END

#endif
