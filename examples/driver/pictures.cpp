// Takes the pictures of the dialogs, each in a state that shows what it is for: pictures FILE
// FOLDER opens a text in the editor, goes through the dialogs as a person does, and writes
// FOLDER\NAME.bmp. scripts/pictures runs it.
#include <cstring>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "../../src/resources/resource.h"
#include "../editor/commands.h"
#include "../editor/own_fonts.h"
#include "driver.h"
#include "orvel.h"

struct Pictures {
    HWND editor;
    std::wstring folder;
    int failures;
};

// The part of the screen that a window takes, rows from below, as a bitmap file has them.
static std::vector<uint32_t> ReadScreen(RECT place, const BITMAPINFO &format)
{
    int width = place.right - place.left, height = place.bottom - place.top;
    std::vector<uint32_t> pixels(size_t(width) * size_t(height));
    HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    SelectObject(memory, old);
    BITMAPINFO wanted = format;
    GetDIBits(memory, bitmap, 0, UINT(height), pixels.data(), &wanted, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return pixels;
}

static bool WriteBitmap(const std::wstring &path, RECT place)
{
    BITMAPINFO format = {};
    format.bmiHeader = {sizeof format.bmiHeader,
                        place.right - place.left,
                        place.bottom - place.top,
                        1,
                        32,
                        BI_RGB,
                        0,
                        0,
                        0,
                        0,
                        0};
    std::vector<uint32_t> pixels = ReadScreen(place, format);
    BITMAPFILEHEADER head = {};
    head.bfType = 'B' | 'M' << 8;
    head.bfOffBits = sizeof head + sizeof format.bmiHeader;
    head.bfSize = DWORD(head.bfOffBits + 4 * pixels.size());
    FILE *file = _wfopen(path.c_str(), L"wb");
    if (!file)
        return false;
    fwrite(&head, sizeof head, 1, file);
    fwrite(&format.bmiHeader, sizeof format.bmiHeader, 1, file);
    bool done = fwrite(pixels.data(), 4, pixels.size(), file) == pixels.size();
    return fclose(file) == 0 && done;
}

static void TakePicture(Pictures *pictures, const char *name, HWND window)
{
    RECT place;
    std::wstring path =
        pictures->folder + L"\\" + std::wstring(name, name + strlen(name)) + L".bmp";
    Sleep(300);  // until the system has painted it
    if (window && GetWindowRect(window, &place) && WriteBitmap(path, place))
        return;
    printf("no picture of %s\n", name);
    ++pictures->failures;
}

template <typename Function>
static Function *Bind(HMODULE module, const char *name)
{
    return reinterpret_cast<Function *>(GetProcAddress(module, name));
}

// The meter is gone before a person could see it, so this program opens it itself.
static void TakeMeter(Pictures *pictures)
{
    HMODULE module = LoadLibraryA("orvel.dll");
    auto *start = Bind<decltype(StartOrvelMeter)>(module, "StartOrvelMeter");
    auto *update = Bind<decltype(UpdateOrvelMeter)>(module, "UpdateOrvelMeter");
    auto *close = Bind<decltype(CloseOrvelMeter)>(module, "CloseOrvelMeter");
    if (!start || !update || !close || !start(nullptr, "Converting letter.xml"))
        return TakePicture(pictures, "METER", nullptr);
    update(40);
    TakePicture(pictures, "METER", GetActiveWindow());
    close();
}

static void TakeSettings(Pictures *pictures)
{
    struct Inner {
        const char *name;
        int button;
        const wchar_t *title;
    };
    constexpr Inner kInner[] = {
        {"KEYBOARDS", ID_OPTIONS_KEYBOARDS, L"Select keyboards to use"},
        {"FONTS", ID_OPTIONS_FONTS, L"Orvel: Set font properties"},
    };
    Choose(pictures->editor, kOptions);
    HWND options = WaitForDialog(L"Orvel: Options");
    TakePicture(pictures, "OPTIONS", options);
    for (const Inner &inner : kInner) {
        PostMessageW(GetDlgItem(options, inner.button), BM_CLICK, 0, 0);
        TakePicture(pictures, inner.name, WaitForDialog(inner.title));
        PressKey(VK_ESCAPE);
    }
    PressKey(VK_ESCAPE);
}

static void TakeFind(Pictures *pictures)
{
    Choose(pictures->editor, kFindText);
    HWND find = WaitForDialog(L"Finding Lao text");
    TakePicture(pictures, "SEARCHDLG", find);
    Click(find, ID_FIND_REPLACE);
    TakePicture(pictures, "SEARCHDLG-replace", WaitForDialog(L"Replacing Lao text"));
    PressKey(VK_ESCAPE);
}

// A word is added to be seen, and taken out again.
static void TakeUserWords(Pictures *pictures)
{
    Choose(pictures->editor, kDictionary);
    HWND words = WaitForDialog(L"Lao User Dictionary");
    Click(words, ID_USERDICT_ADD);
    TakePicture(pictures, "USERDICT", words);
    Click(words, ID_USERDICT_DELETE);
    PressKey(VK_ESCAPE);
}

static void TakeOthers(Pictures *pictures)
{
    struct Dialog {
        const char *name;
        int command;
        const wchar_t *title;
        int endButton;
    };
    constexpr Dialog kDialogs[] = {
        {"SPELL", kCheckSpelling, L"Spelling check: Lao", ID_CANCEL},
        {"SORTING", kSortLines, L"Lao Sort", ID_CANCEL},
        {"FONTPICK", kViewFont, L"Orvel: Font Substitution", ID_FONTPICK_ONCE},
    };
    for (const Dialog &row : kDialogs) {
        Choose(pictures->editor, row.command);
        HWND dialog = WaitForDialog(row.title);
        SendDlgItemMessageW(dialog, ID_FONTPICK_FONTS, CB_SETCURSEL, 1, 0);  // no other one has it
        TakePicture(pictures, row.name, dialog);
        Click(dialog, row.endButton);
    }
    Choose(pictures->editor, kEditLine);
    TakePicture(pictures, "EDITLAO", WaitForDialog(L""));
    PressKey(VK_ESCAPE);
}

int wmain(int count, wchar_t **arguments)
{
    if (count != 3)
        return 2;
    SetProcessDPIAware();
    AddOwnFonts();
    Pictures pictures = {StartEditor(arguments[1]), arguments[2], 0};
    if (!pictures.editor)
        return 1;
    TakePicture(&pictures, "editor", pictures.editor);
    // What is selected is what the dialogs are opened with: the first word of the text.
    SendDlgItemMessageW(pictures.editor, kTextControl, EM_SETSEL, 0, 7);
    TakeUserWords(&pictures);
    TakeFind(&pictures);
    TakeOthers(&pictures);
    TakeSettings(&pictures);
    PostMessageW(pictures.editor, WM_CLOSE, 0, 0);
    WaitForEnd(pictures.editor);
    TakeMeter(&pictures);
    return pictures.failures != 0;
}
