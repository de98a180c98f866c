// Conversion between bytes and UTF-16: UTF-8 (65001) and Western European (1252, also CP_ACP).
#ifndef ORVEL_PLATFORM_WINNLS_H
#define ORVEL_PLATFORM_WINNLS_H

#include "windef.h"

#define CP_ACP 0
#define CP_UTF8 65001
#define MB_PRECOMPOSED 0x00000001
#define MB_ERR_INVALID_CHARS 0x00000008
#define WC_ERR_INVALID_CHARS 0x00000080
#define WC_NO_BEST_FIT_CHARS 0x00000400

ORVEL_API_BEGIN

/* Units written, or those needed when the size is 0; 0 is a failure, told by GetLastError. The
   length -1 takes a text up to and with its terminator. */
int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR wide,
                               int wideSize);
int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int length, LPSTR text,
                               int textSize, LPCSTR defaultChar, LPBOOL usedDefault);

ORVEL_API_END

#endif
