// Folders of the system.
#ifndef ORVEL_PLATFORM_SHLOBJ_H
#define ORVEL_PLATFORM_SHLOBJ_H

#include "windows.h"

#define CSIDL_COMMON_APPDATA 0x0023
#define CSIDL_FLAG_CREATE 0x8000
#define SHGFP_TYPE_CURRENT 0

ORVEL_API_BEGIN

/* The folder for data that programs share: $XDG_DATA_HOME, else ~/.local/share, as a path with
   backslashes. `path` has room for MAX_PATH bytes and is empty after a failure: no such folder, no
   way to create it, or a path that doesn't fit. Other folders give E_INVALIDARG. */
HRESULT WINAPI SHGetFolderPathA(HWND owner, int folder, HANDLE token, DWORD flags, LPSTR path);

ORVEL_API_END

#endif
