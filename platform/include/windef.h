// Types and basic macros. LONG and DWORD are 32 bits wide and WCHAR 16, as on Windows; a handle is
// a pointer to a record that is never defined, so that the compiler keeps the kinds apart. Calls
// need no convention of their own here: WINAPI and CALLBACK are empty.
#ifndef ORVEL_PLATFORM_WINDEF_H
#define ORVEL_PLATFORM_WINDEF_H

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <uchar.h>
#endif

#ifdef __cplusplus
#define ORVEL_API_BEGIN                                                                            \
    _Pragma("GCC visibility push(default)") extern "C"                                             \
    {
#define ORVEL_API_END                                                                              \
    }                                                                                              \
    _Pragma("GCC visibility pop")
#else
#define ORVEL_API_BEGIN _Pragma("GCC visibility push(default)")
#define ORVEL_API_END _Pragma("GCC visibility pop")
#endif

#define WINAPI
#define CALLBACK
#define APIENTRY
#define CONST const
#define VOID void
#define FALSE 0
#define TRUE 1
#define MAX_PATH 260

typedef char CHAR;
typedef char16_t WCHAR;
typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef int16_t SHORT;
typedef uint16_t USHORT;
typedef int INT;
typedef unsigned int UINT;
typedef int BOOL;
typedef float FLOAT;
typedef WORD ATOM;
typedef LONG HRESULT;
typedef LONG LSTATUS;

typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef uintptr_t DWORD_PTR;
typedef size_t SIZE_T;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;

typedef void *PVOID, *LPVOID;
typedef const void *LPCVOID;
typedef char *LPSTR, *PSTR;
typedef const char *LPCSTR, *PCSTR;
typedef WCHAR *LPWSTR, *PWSTR;
typedef const WCHAR *LPCWSTR, *PCWSTR;
typedef BYTE *PBYTE, *LPBYTE;
typedef WORD *PWORD, *LPWORD;
typedef DWORD *PDWORD, *LPDWORD;
typedef LONG *PLONG, *LPLONG;
typedef BOOL *PBOOL, *LPBOOL;
typedef INT *LPINT;

typedef void *HANDLE;
typedef HANDLE HGLOBAL;
typedef HANDLE HLOCAL;

#define DECLARE_HANDLE(name)                                                                       \
    struct name##__;                                                                               \
    typedef struct name##__ *name
DECLARE_HANDLE(HINSTANCE);
typedef HINSTANCE HMODULE;
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HKEY);
typedef HKEY *PHKEY;
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HICON);
typedef HICON HCURSOR;
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HHOOK);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HFONT);
typedef void *HGDIOBJ;
typedef DWORD COLORREF;

typedef INT_PTR(WINAPI *FARPROC)();

#define LOWORD(value) ((WORD)((ULONG_PTR)(value)&0xffff))
#define HIWORD(value) ((WORD)(((ULONG_PTR)(value) >> 16) & 0xffff))
#define LOBYTE(value) ((BYTE)((ULONG_PTR)(value)&0xff))
#define HIBYTE(value) ((BYTE)(((ULONG_PTR)(value) >> 8) & 0xff))
#define MAKEWORD(low, high) ((WORD)(LOBYTE(low) | ((WORD)LOBYTE(high) << 8)))
#define MAKELONG(low, high) ((LONG)(LOWORD(low) | ((DWORD)LOWORD(high) << 16)))
#define MAKEWPARAM(low, high) ((WPARAM)(DWORD)MAKELONG(low, high))
#define MAKELPARAM(low, high) ((LPARAM)(DWORD)MAKELONG(low, high))
#define UNREFERENCED_PARAMETER(name) ((void)(name))

typedef struct tagPOINT {
    LONG x, y;
} POINT, *PPOINT, *LPPOINT;

typedef struct tagRECT {
    LONG left, top, right, bottom;
} RECT, *PRECT, *LPRECT;
typedef const RECT *LPCRECT;

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_FAIL ((HRESULT)0x80004005)
#define E_INVALIDARG ((HRESULT)0x80070057)
#define SUCCEEDED(result) ((HRESULT)(result) >= 0)
#define FAILED(result) ((HRESULT)(result) < 0)

#endif
