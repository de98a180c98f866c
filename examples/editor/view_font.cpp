// The control uses a font until it is given another one, so the old one goes after that.
#include "view_font.h"

#include <windows.h>

#include "document.h"

constexpr int kPointSize = 18;
constexpr const char *kLaoFaces[] = {
    "Phetsarath OT", "Saysettha OT", "Noto Sans Lao", "Leelawadee UI", "Lao UI", "DokChampa",
};

static HFONT gViewFont;

static int CALLBACK StopAtFirst(const LOGFONTA *, const TEXTMETRICA *, DWORD, LPARAM)
{
    return 0;
}

static bool HasFace(const char *face)
{
    HDC screen = GetDC(nullptr);
    bool isThere = !EnumFontFamiliesA(screen, face, StopAtFirst, 0);
    ReleaseDC(nullptr, screen);
    return isThere;
}

const char *FindLaoFont()
{
    for (const char *face : kLaoFaces)
        if (HasFace(face))
            return face;
    return kLaoFaces[0];  // the system puts another one in its place
}

std::string ReadViewFont()
{
    LOGFONTA font = {};
    GetObjectA(gViewFont, sizeof font, &font);
    return font.lfFaceName;
}

void SetViewFont(const char *face)
{
    HDC screen = GetDC(nullptr);
    LOGFONTA font = {};
    font.lfHeight = -MulDiv(kPointSize, GetDeviceCaps(screen, LOGPIXELSY), 72);
    font.lfCharSet = DEFAULT_CHARSET;
    lstrcpynA(font.lfFaceName, face, LF_FACESIZE);
    ReleaseDC(nullptr, screen);
    HFONT old = gViewFont;
    gViewFont = CreateFontIndirectA(&font);
    SendMessageW(gDocument.text, WM_SETFONT, WPARAM(gViewFont), TRUE);
    if (old)
        DeleteObject(old);
}
