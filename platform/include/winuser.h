// Windows in memory, the messages between them, and message boxes. There is no screen: a window is
// a record in a tree, and what a person would see goes to the presenter.
#ifndef ORVEL_PLATFORM_WINUSER_H
#define ORVEL_PLATFORM_WINUSER_H

#include "windef.h"

#define WM_NULL 0x0000
#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_SETTEXT 0x000C
#define WM_GETTEXT 0x000D
#define WM_GETTEXTLENGTH 0x000E
#define WM_CLOSE 0x0010
#define WM_NCCREATE 0x0081
#define WM_NCDESTROY 0x0082
#define WM_COMMAND 0x0111
#define WM_USER 0x0400
#define WM_APP 0x8000

#define WS_OVERLAPPED 0x00000000
#define WS_POPUP 0x80000000
#define WS_CHILD 0x40000000
#define WS_VISIBLE 0x10000000
#define WS_EX_TOPMOST 0x00000008
#define CW_USEDEFAULT ((int)0x80000000)

#define GWL_ID (-12)
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWLP_ID (-12)

#define HWND_TOP ((HWND)0)
#define HWND_BOTTOM ((HWND)(LONG_PTR)1)
#define HWND_TOPMOST ((HWND)(LONG_PTR)-1)
#define HWND_NOTOPMOST ((HWND)(LONG_PTR)-2)
#define SWP_NOSIZE 0x0001
#define SWP_NOMOVE 0x0002
#define SWP_NOZORDER 0x0004
#define SWP_NOACTIVATE 0x0010
#define SWP_SHOWWINDOW 0x0040
#define SWP_HIDEWINDOW 0x0080

#define SM_CXSCREEN 0
#define SM_CYSCREEN 1

#define MB_OK 0x00000000
#define MB_OKCANCEL 0x00000001
#define MB_ABORTRETRYIGNORE 0x00000002
#define MB_YESNOCANCEL 0x00000003
#define MB_YESNO 0x00000004
#define MB_RETRYCANCEL 0x00000005
#define MB_CANCELTRYCONTINUE 0x00000006
#define MB_ICONHAND 0x00000010
#define MB_ICONQUESTION 0x00000020
#define MB_ICONEXCLAMATION 0x00000030
#define MB_ICONASTERISK 0x00000040
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONSTOP MB_ICONHAND
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_DEFBUTTON1 0x00000000
#define MB_DEFBUTTON2 0x00000100
#define MB_DEFBUTTON3 0x00000200
#define MB_DEFBUTTON4 0x00000300
#define MB_APPLMODAL 0x00000000
#define MB_SYSTEMMODAL 0x00001000
#define MB_TASKMODAL 0x00002000
#define MB_SETFOREGROUND 0x00010000
#define MB_TOPMOST 0x00040000
#define MB_TYPEMASK 0x0000000F
#define MB_DEFMASK 0x00000F00

#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
#define IDTRYAGAIN 10
#define IDCONTINUE 11

typedef LRESULT(CALLBACK *WNDPROC)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

typedef struct tagWNDCLASSA {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
} WNDCLASSA;

typedef struct tagCREATESTRUCTA {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy, cx, y, x;
    LONG style;
    LPCSTR lpszName;
    LPCSTR lpszClass;
    DWORD dwExStyle;
} CREATESTRUCTA, *LPCREATESTRUCTA;

ORVEL_API_BEGIN

ATOM WINAPI RegisterClassA(const WNDCLASSA *windowClass);
BOOL WINAPI UnregisterClassA(LPCSTR className, HINSTANCE instance);
HWND WINAPI CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x,
                            int y, int width, int height, HWND parent, HMENU menuOrId,
                            HINSTANCE instance, LPVOID parameter);
BOOL WINAPI DestroyWindow(HWND window);
BOOL WINAPI IsWindow(HWND window);
HWND WINAPI FindWindowA(LPCSTR className, LPCSTR title);
HWND WINAPI GetDlgItem(HWND dialog, int id);
HWND WINAPI GetParent(HWND window);
LONG WINAPI GetWindowLongA(HWND window, int index);
BOOL WINAPI GetWindowRect(HWND window, LPRECT rect);
BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
HWND WINAPI GetActiveWindow(void);
HWND WINAPI SetActiveWindow(HWND window);
int WINAPI GetSystemMetrics(int index);

LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
UINT WINAPI RegisterWindowMessageA(LPCSTR name);
int WINAPI GetWindowTextA(HWND window, LPSTR text, int size);
BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text);

/* Goes to the presenter, see SetMessageBoxAnswerer in runtime.h; 0 for a dead owner. */
int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT flags);

ORVEL_API_END

#endif
