// The tests' hooks on native: functions that stand before the layer's, and call them.
#include "testing/testing.h"

#include <algorithm>
#include <dlfcn.h>
#include <map>
#include <stdlib.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "drawing/contexts.h"

struct TestingState {
    int failAfter = -1;  // allocations until the one that fails; negative: none does
    std::map<HWND, std::vector<DrawnTextRecord>> drawn;  // since each window's last BeginPaint
    const SystemFontRecord *fonts = nullptr;             // the test's own
    int fontCount = 0;
};
static TestingState gTesting;

// The layer's own function of the name that the caller has.
static void *FindInLayer(const char *name)
{
    return dlsym(RTLD_NEXT, name);
}
#define CALL_LAYER(name) ((decltype(&(name)))FindInLayer(#name))

// ---- memory ----

int FailAllocationAfter(int count)
{
    gTesting.failAfter = count;
    return 1;
}

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size)
{
    if (gTesting.failAfter >= 0 && gTesting.failAfter-- == 0) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return CALL_LAYER(GlobalAlloc)(flags, size);
}

// ---- what was painted: kept for each window until it is painted again ----

HDC WINAPI BeginPaint(HWND window, LPPAINTSTRUCT paint)
{
    gTesting.drawn[window].clear();
    return CALL_LAYER(BeginPaint)(window, paint);
}

// The layer says whether the text can be drawn, and keeps nothing; the record is the tests' alone.
BOOL WINAPI TextOutA(HDC context, int x, int y, LPCSTR text, int length)
{
    if (!CALL_LAYER(TextOutA)(context, x, y, text, length))
        return FALSE;
    const ContextRecord *how =
        reinterpret_cast<const ContextRecord *>(context);  // a living one: the layer says so
    const FontRecord *font = reinterpret_cast<const FontRecord *>(how->font);
    DrawnTextRecord drawn = {"", x, y, how->color, how->align, how->backgroundMode, font->font};
    std::string(text, size_t(length)).copy(drawn.text, sizeof drawn.text - 1);
    gTesting.drawn[how->window].push_back(drawn);
    return TRUE;
}

int DrawnText(HWND window, int number, DrawnTextRecord *drawn)
{
    const std::vector<DrawnTextRecord> &lines = gTesting.drawn[window];
    if (number < 0 || size_t(number) >= lines.size())
        return 0;
    *drawn = lines[size_t(number)];
    return 1;
}

// ---- fonts ----

int ListSystemFonts(const SystemFontRecord *fonts, int count)
{
    gTesting.fonts = fonts;
    gTesting.fontCount = count;
    return 1;
}

// Ends where the callback gives 0. The layer refuses a dead context.
int WINAPI EnumFontFamiliesA(HDC context, LPCSTR family, FONTENUMPROCA callback, LPARAM parameter)
{
    int result = CALL_LAYER(EnumFontFamiliesA)(context, family, callback, parameter);
    for (int i = 0; result && i < gTesting.fontCount; ++i) {
        LOGFONTA font = {};
        TEXTMETRICA metrics = {};
        std::string(gTesting.fonts[i].face).copy(font.lfFaceName, LF_FACESIZE - 1);
        result = callback(&font, &metrics, gTesting.fonts[i].type, parameter);
    }
    return result;
}

// ---- folders ----

void UseFoldersBelow(const char *folder)
{
    std::string native = folder;
    std::replace(native.begin(), native.end(), '\\', '/');
    setenv("XDG_CONFIG_HOME", (native + "/config").c_str(), 1);
    setenv("XDG_DATA_HOME", (native + "/data").c_str(), 1);
}

// The whole file goes: all keys in it are of this program's tests.
void RemoveRegistryKey(HKEY, const char *)
{
    unlink((std::string(getenv("XDG_CONFIG_HOME")) + "/orvel/registry").c_str());
}
