// A small word processor for Lao, to try the library with and to copy from: a window with one edit
// control, and a menu. Each file beside this one is a subject of its own. editor [FILE] opens a
// UTF-8 file at once.
#include <iterator>
#include <windows.h>
#include <shellapi.h>

#include "commands.h"
#include "document.h"
#include "library.h"
#include "own_fonts.h"
#include "view_font.h"

constexpr wchar_t kFrameClass[] = L"OrvelEditor";

static void Undo()
{
    SendMessageW(gDocument.text, EM_UNDO, 0, 0);
}

static void SelectAll()
{
    SendMessageW(gDocument.text, EM_SETSEL, 0, -1);
}

static void CloseEditor()
{
    SendMessageW(gDocument.frame, WM_CLOSE, 0, 0);
}

// The menu: the rows of one menu stand together.
struct MenuRow {
    const wchar_t *menu, *text;
    Command id;
    BYTE flags, key;  // the shortcut; no key: there is none
    void (*handler)();
};
constexpr MenuRow kMenuRows[] = {
    {L"&File", L"&Open...\tCtrl+O", kOpenFile, FCONTROL, 'O', OpenFile},
    {L"&File", L"&Save\tCtrl+S", kSaveFile, FCONTROL, 'S', SaveFile},
    {L"&File", L"Save &as...", kSaveFileAs, 0, 0, SaveFileAs},
    {L"&File", L"&Convert a document...", kConvertFile, 0, 0, ConvertFiles},
    {L"&File", L"E&xit", kCloseEditor, 0, 0, CloseEditor},
    {L"&Edit", L"&Undo\tCtrl+Z", kUndo, 0, 0, Undo},  // the control knows this key itself
    {L"&Edit", L"Select &all\tCtrl+A", kSelectAll, FCONTROL, 'A', SelectAll},
    {L"&Edit", L"&Find...\tCtrl+F", kFindText, FCONTROL, 'F', FindTextCommand},
    {L"&Edit", L"&Replace...\tCtrl+H", kReplaceText, FCONTROL, 'H', ReplaceTextCommand},
    {L"&Edit", L"&Line in Lao...\tCtrl+L", kEditLine, FCONTROL, 'L', EditLine},
    {L"&Lao", L"&Insert breaks\tF5", kInsertMarks, 0, VK_F5, InsertMarks},
    {L"&Lao", L"&Remove breaks\tF6", kRemoveMarks, 0, VK_F6, RemoveMarks},
    {L"&Lao", L"Sho&w breaks\tF8", kShowMarks, 0, VK_F8, ToggleMarks},
    {L"&Lao", L"&Spelling...\tF7", kCheckSpelling, 0, VK_F7, CheckSpelling},
    {L"&Lao", L"S&ort lines...", kSortLines, 0, 0, SortLines},
    {L"&Lao", L"User &dictionary...", kDictionary, 0, 0, ShowDictionary},
    {L"&Lao", L"&Font...", kViewFont, 0, 0, ChooseViewFont},
    {L"&Lao", L"O&ptions...", kOptions, 0, 0, ShowOptions},
};

static HMENU MakeMenu()
{
    HMENU bar = CreateMenu(), menu = nullptr;
    const wchar_t *name = nullptr;
    for (const MenuRow &row : kMenuRows) {
        if (!name || lstrcmpW(row.menu, name)) {
            name = row.menu;
            menu = CreatePopupMenu();
            AppendMenuW(bar, MF_POPUP, UINT_PTR(menu), name);
        }
        AppendMenuW(menu, MF_STRING, row.id, row.text);
    }
    return bar;
}

static HACCEL MakeShortcuts()
{
    ACCEL shortcuts[std::size(kMenuRows)];
    int count = 0;
    for (const MenuRow &row : kMenuRows)
        if (row.key)
            shortcuts[count++] = {BYTE(FVIRTKEY | row.flags), row.key, WORD(row.id)};
    return CreateAcceleratorTableW(shortcuts, count);
}

static void RunCommand(int id)
{
    for (const MenuRow &row : kMenuRows)
        if (row.id == id)
            row.handler();
}

static void MakeTextControl(HWND frame)
{
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL |
                             ES_WANTRETURN | ES_NOHIDESEL;
    gDocument.frame = frame;
    gDocument.code = kUtf8;
    gDocument.text =
        CreateWindowExW(0, L"EDIT", L"", kStyle, 0, 0, 0, 0, frame, HMENU(INT_PTR(kTextControl)),
                        GetModuleHandleW(nullptr), nullptr);
    SendMessageW(gDocument.text, EM_SETLIMITTEXT, 0, 0);  // as much as memory holds
    SetViewFont(FindLaoFont());
}

static LRESULT CALLBACK FrameProc(HWND frame, UINT message, WPARAM first, LPARAM second)
{
    switch (message) {
    case WM_CREATE: MakeTextControl(frame); return 0;
    case WM_SIZE: MoveWindow(gDocument.text, 0, 0, LOWORD(second), HIWORD(second), TRUE); return 0;
    case WM_SETFOCUS: SetFocus(gDocument.text); return 0;
    case WM_COMMAND: RunCommand(LOWORD(first)); return 0;
    case WM_CLOSE:
        if (CanDiscard())
            DestroyWindow(frame);
        return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    }
    return DefWindowProcW(frame, message, first, second);
}

static void ShowFrame(int show)
{
    WNDCLASSW frame = {};
    frame.lpfnWndProc = FrameProc;
    frame.hInstance = GetModuleHandleW(nullptr);
    frame.hCursor = LoadCursor(nullptr, IDC_ARROW);
    frame.lpszClassName = kFrameClass;
    RegisterClassW(&frame);
    CreateWindowExW(0, kFrameClass, L"New document - Editor", WS_OVERLAPPEDWINDOW, 40, 40, 800, 500,
                    nullptr, MakeMenu(), frame.hInstance, nullptr);
    ShowWindow(gDocument.frame, show);
}

// The library's dialogs bring their keys along, so the loop knows nothing of them; shortcuts are
// those of the frame alone.
static void RunMessageLoop()
{
    HACCEL shortcuts = MakeShortcuts();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (GetActiveWindow() == gDocument.frame &&
            TranslateAcceleratorW(gDocument.frame, shortcuts, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, char *, int show)
{
    SetProcessDPIAware();  // the dialogs then have their true size on every screen
    AddOwnFonts();
    const wchar_t *failure = StartOrvel();
    if (failure) {
        Tell(failure);
        return 1;
    }
    ShowFrame(show);
    int count;
    wchar_t **arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (arguments && count > 1)
        LoadFile(arguments[1], kUtf8);
    RunMessageLoop();
    return 0;
}
