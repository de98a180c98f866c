// Windows in memory, the messages between them, and message boxes. There is no screen: a window is
// a record in a tree, and what a person would be asked goes to an answerer. A message, style or
// notification that neither the library nor its tests use isn't there.
#ifndef ORVEL_PLATFORM_WINUSER_H
#define ORVEL_PLATFORM_WINUSER_H

#include "windef.h"

#define WM_NULL 0x0000
#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_ACTIVATE 0x0006
#define WM_SETFOCUS 0x0007
#define WM_KILLFOCUS 0x0008
#define WM_SETREDRAW 0x000B
#define WM_SETTEXT 0x000C
#define WM_GETTEXT 0x000D
#define WM_GETTEXTLENGTH 0x000E
#define WM_PAINT 0x000F
#define WM_CLOSE 0x0010
#define WM_QUIT 0x0012
#define WM_SETFONT 0x0030
#define WM_GETFONT 0x0031
#define WM_NCCREATE 0x0081
#define WM_NCDESTROY 0x0082
#define WM_GETDLGCODE 0x0087
#define WM_KEYFIRST 0x0100
#define WM_KEYDOWN 0x0100
#define WM_KEYUP 0x0101
#define WM_CHAR 0x0102
#define WM_KEYLAST 0x0109
#define WM_ENTERIDLE 0x0121
#define WM_INITDIALOG 0x0110
#define WM_COMMAND 0x0111
#define WM_LBUTTONDOWN 0x0201
#define WM_LBUTTONUP 0x0202
#define WM_USER 0x0400
#define WM_APP 0x8000

#define WS_OVERLAPPED 0x00000000
#define WS_POPUP 0x80000000
#define WS_CHILD 0x40000000
#define WS_VISIBLE 0x10000000
#define WS_DISABLED 0x08000000
#define WS_BORDER 0x00800000
#define WS_VSCROLL 0x00200000
#define WS_GROUP 0x00020000
#define WS_TABSTOP 0x00010000
#define WS_EX_TOPMOST 0x00000008
#define WS_EX_NOPARENTNOTIFY 0x00000004
#define DS_SETFONT 0x00000040
#define DS_SETFOREGROUND 0x00000200
#define DS_CENTER 0x00000800
#define CW_USEDEFAULT ((int)0x80000000)

#define GWL_ID (-12)
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWLP_ID (-12)
#define GWLP_WNDPROC (-4)

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

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_SHOW 5
#define WA_INACTIVE 0
#define WA_ACTIVE 1
#define GW_HWNDNEXT 2
#define GW_HWNDPREV 3
#define GW_OWNER 4
#define GW_CHILD 5

#define VK_BACK 0x08
#define VK_TAB 0x09
#define VK_RETURN 0x0D
#define VK_SHIFT 0x10
#define VK_ESCAPE 0x1B
#define VK_SPACE 0x20
#define VK_PRIOR 0x21
#define VK_NEXT 0x22
#define VK_END 0x23
#define VK_HOME 0x24
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28
#define VK_DELETE 0x2E
#define KEYEVENTF_KEYUP 0x0002

#define PM_NOREMOVE 0x0000
#define PM_REMOVE 0x0001
#define WH_KEYBOARD 2
#define HC_ACTION 0
#define HC_NOREMOVE 3

#define MSGF_DIALOGBOX 0
#define DM_GETDEFID (WM_USER + 0)
#define DM_SETDEFID (WM_USER + 1)
#define DC_HASDEFID 0x534B
#define DLGC_WANTARROWS 0x0001
#define DLGC_HASSETSEL 0x0008
#define DLGC_DEFPUSHBUTTON 0x0010
#define DLGC_UNDEFPUSHBUTTON 0x0020
#define DLGC_RADIOBUTTON 0x0040
#define DLGC_WANTCHARS 0x0080
#define DLGC_STATIC 0x0100
#define DLGC_BUTTON 0x2000
#define BS_PUSHBUTTON 0
#define BS_DEFPUSHBUTTON 1
#define BS_CHECKBOX 2
#define BS_AUTOCHECKBOX 3
#define BS_RADIOBUTTON 4
#define BS_GROUPBOX 7
#define BS_AUTORADIOBUTTON 9
#define BS_TYPEMASK 0x000F
#define BS_LEFTTEXT 0x0020
#define BS_MULTILINE 0x2000
#define BST_UNCHECKED 0
#define BST_CHECKED 1
#define BM_GETCHECK 0x00F0
#define BM_SETCHECK 0x00F1
#define BM_SETSTYLE 0x00F4
#define BM_CLICK 0x00F5
#define BN_CLICKED 0

#define ES_AUTOHSCROLL 0x0080
#define ES_READONLY 0x0800
#define EM_GETSEL 0x00B0
#define EM_SETSEL 0x00B1
#define EM_SCROLLCARET 0x00B7
#define EM_SETREADONLY 0x00CF
#define EN_SETFOCUS 0x0100
#define EN_KILLFOCUS 0x0200
#define EN_CHANGE 0x0300
#define EN_UPDATE 0x0400

#define CBS_SIMPLE 0x0001
#define CBS_DROPDOWN 0x0002
#define CBS_DROPDOWNLIST 0x0003
#define CBS_AUTOHSCROLL 0x0040
#define CBS_SORT 0x0100
#define CB_ADDSTRING 0x0143
#define CB_GETCOUNT 0x0146
#define CB_GETCURSEL 0x0147
#define CB_GETLBTEXT 0x0148
#define CB_GETLBTEXTLEN 0x0149
#define CB_RESETCONTENT 0x014B
#define CB_SETCURSEL 0x014E
#define CB_GETITEMDATA 0x0150
#define CB_SETITEMDATA 0x0151
#define CB_GETDROPPEDCONTROLRECT 0x0152
#define CB_FINDSTRINGEXACT 0x0158
#define CB_OKAY 0
#define CB_ERR (-1)
#define CB_ERRSPACE (-2)
#define CBN_SELCHANGE 1
#define CBN_SETFOCUS 3
#define CBN_KILLFOCUS 4
#define CBN_EDITCHANGE 5
#define CBN_EDITUPDATE 6

#define GR_GDIOBJECTS 0
#define GR_USEROBJECTS 1

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

typedef INT_PTR(CALLBACK *DLGPROC)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
typedef LRESULT(CALLBACK *HOOKPROC)(int code, WPARAM wParam, LPARAM lParam);

typedef struct tagMSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
} MSG, *PMSG, *LPMSG;

typedef struct tagPAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
} PAINTSTRUCT, *LPPAINTSTRUCT;

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
HWND WINAPI GetDesktopWindow(void);
HWND WINAPI GetWindow(HWND window, UINT relation);
HWND WINAPI GetParent(HWND window);
LONG WINAPI GetWindowLongA(HWND window, int index);
/* Only GWLP_WNDPROC can be set. */
LONG_PTR WINAPI SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
LRESULT WINAPI CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam,
                               LPARAM lParam);
BOOL WINAPI GetWindowRect(HWND window, LPRECT rect);
/* Windows have no frame: the client area is the whole of the window. */
BOOL WINAPI GetClientRect(HWND window, LPRECT rect);
BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
HWND WINAPI GetActiveWindow(void);
HWND WINAPI SetActiveWindow(HWND window);
BOOL WINAPI SetForegroundWindow(HWND window);
HWND WINAPI GetFocus(void);
HWND WINAPI SetFocus(HWND window);
BOOL WINAPI ShowWindow(HWND window, int command);
BOOL WINAPI EnableWindow(HWND window, BOOL enable);
BOOL WINAPI IsWindowVisible(HWND window);
BOOL WINAPI IsWindowEnabled(HWND window);
int WINAPI GetSystemMetrics(int index);

LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
UINT WINAPI RegisterWindowMessageA(LPCSTR name);
int WINAPI GetWindowTextA(HWND window, LPSTR text, int size);
BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text);

/* The queue belongs to the one thread that uses windows. With nothing left in it that could ever
   bring a message, GetMessageA gives -1 instead of waiting. Keys come by keybd_event and go to the
   window with the focus, past the keyboard hooks. */
BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void WINAPI PostQuitMessage(int code);
BOOL WINAPI PeekMessageA(LPMSG message, HWND window, UINT first, UINT last, UINT flags);
BOOL WINAPI GetMessageA(LPMSG message, HWND window, UINT first, UINT last);
BOOL WINAPI TranslateMessage(const MSG *message);
LRESULT WINAPI DispatchMessageA(const MSG *message);
void WINAPI keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR extra);
SHORT WINAPI GetAsyncKeyState(int key);
/* As of the last key that was taken out of the queue. */
SHORT WINAPI GetKeyState(int key);

/* Keyboard hooks of the calling thread only. */
HHOOK WINAPI SetWindowsHookExA(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread);
BOOL WINAPI UnhookWindowsHookEx(HHOOK hook);
LRESULT WINAPI CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);

HWND WINAPI CreateDialogParamA(HINSTANCE module, LPCSTR name, HWND parent, DLGPROC procedure,
                               LPARAM parameter);
/* With nobody at the screen a queue that is empty stays empty. Then the owner gets WM_ENTERIDLE and
   may act; where it doesn't, the dialog is asked to close. -1 when it can't be made or never ends.
 */
INT_PTR WINAPI DialogBoxParamA(HINSTANCE module, LPCSTR name, HWND parent, DLGPROC procedure,
                               LPARAM parameter);
BOOL WINAPI EndDialog(HWND dialog, INT_PTR result);
LRESULT WINAPI DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
HWND WINAPI GetDlgItem(HWND dialog, int id);
int WINAPI GetDlgCtrlID(HWND control);
BOOL WINAPI SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
UINT WINAPI GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size);
LRESULT WINAPI SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
UINT WINAPI GetDlgItemInt(HWND dialog, int id, BOOL *isNumber, BOOL isSigned);
BOOL WINAPI SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned);
BOOL WINAPI CheckDlgButton(HWND dialog, int id, UINT check);
UINT WINAPI IsDlgButtonChecked(HWND dialog, int id);
HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);
HWND WINAPI GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous);
BOOL WINAPI IsDialogMessageA(HWND dialog, LPMSG message);

BOOL WINAPI UpdateWindow(HWND window);
/* The whole window, whatever the rectangle: nothing is drawn that could stay. */
BOOL WINAPI InvalidateRect(HWND window, const RECT *rect, BOOL erase);
HDC WINAPI GetDC(HWND window);
int WINAPI ReleaseDC(HWND window, HDC context);
HDC WINAPI BeginPaint(HWND window, LPPAINTSTRUCT paint);
BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT *paint);

/* How many windows and hooks, or GDI objects, there are. */
DWORD WINAPI GetGuiResources(HANDLE process, DWORD kind);

/* Goes to the presenter, see SetMessageBoxAnswerer in runtime.h; 0 for a dead owner. */
int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT flags);

ORVEL_API_END

#endif
