// Programs run beside each other, so that everything waits until it sees what it waits for; a
// stretch of ten seconds without it means that it won't come.
#include "driver.h"

#include "../editor/commands.h"

constexpr int kTries = 200;
constexpr DWORD kPause = 50;           // milliseconds between two looks
constexpr DWORD kAnswerTime = 10'000;  // milliseconds that a window may take to answer

// Looks again and again until the question is answered with a yes.
template <typename Question>
static bool WaitUntil(Question isSo)
{
    for (int i = 0; i < kTries; ++i) {
        if (isSo())
            return true;
        Sleep(kPause);
    }
    return false;
}

static std::wstring OwnFolder()
{
    wchar_t path[MAX_PATH];
    std::wstring folder(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return folder.substr(0, folder.find_last_of(L'\\'));
}

// The editor's window of this process: another one that was left open isn't meant.
static HWND FindEditor(DWORD process)
{
    HWND editor = nullptr;
    DWORD owner = 0;
    while (owner != process && (editor = FindWindowExW(nullptr, editor, L"OrvelEditor", nullptr)))
        GetWindowThreadProcessId(editor, &owner);
    return editor;
}

HWND StartEditor(const std::wstring &file)
{
    std::wstring line = L"\"" + OwnFolder() + L"\\editor.exe\" \"" + file + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process;
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        return nullptr;
    WaitForInputIdle(process.hProcess, kAnswerTime);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    HWND editor = nullptr;
    WaitUntil([&] { return (editor = FindEditor(process.dwProcessId)) != nullptr; });
    WaitUntil([&] { return SetForegroundWindow(editor) && GetForegroundWindow() == editor; });
    WaitForIdle(editor);
    return editor;
}

void WaitForIdle(HWND window)
{
    DWORD_PTR result;
    for (int i = 0; i < 3; ++i) {  // what a message posts comes behind the next one
        SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kAnswerTime, &result);
        Sleep(kPause);
    }
}

void Choose(HWND editor, int command)
{
    PostMessageW(editor, WM_COMMAND, WPARAM(command), 0);
    WaitForIdle(editor);
}

HWND WaitForDialog(const wchar_t *title)
{
    HWND dialog = nullptr;
    bool isUp = WaitUntil([&] {
        dialog = FindWindowW(L"#32770", title);
        return dialog && IsWindowVisible(dialog) && GetForegroundWindow() == dialog;
    });
    if (isUp)
        WaitForIdle(dialog);
    return isUp ? dialog : nullptr;
}

bool WaitForEnd(HWND window)
{
    return WaitUntil([&] { return !IsWindow(window); });
}

void Click(HWND dialog, int button)
{
    PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
    WaitForIdle(dialog);
}

static void SendKey(WORD key, WORD character, DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

void TypeText(const std::wstring &text)
{
    for (wchar_t character : text) {
        SendKey(0, character, KEYEVENTF_UNICODE);
        SendKey(0, character, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    }
    WaitForIdle(GetForegroundWindow());
}

void PressKey(BYTE key, bool withControl)
{
    if (withControl)
        SendKey(VK_CONTROL, 0, 0);
    SendKey(key, 0, 0);
    SendKey(key, 0, KEYEVENTF_KEYUP);
    if (withControl)
        SendKey(VK_CONTROL, 0, KEYEVENTF_KEYUP);
    WaitForIdle(GetForegroundWindow());
}

std::wstring ReadWindow(HWND window)
{
    std::wstring text(size_t(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, 0);
    text.resize(size_t(SendMessageW(window, WM_GETTEXT, text.size(), LPARAM(text.data()))));
    return text;
}

std::wstring WaitForDocument(HWND editor, const std::wstring &wanted)
{
    std::wstring text;
    WaitUntil([&] { return (text = ReadWindow(GetDlgItem(editor, kTextControl))) == wanted; });
    return text;
}
