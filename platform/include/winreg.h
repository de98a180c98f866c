// The registry: keys and values in one text file, see registry_file.h. A result is an error code,
// and the last error stays as it is. Keys and values are never deleted: nobody here does.
#ifndef ORVEL_PLATFORM_WINREG_H
#define ORVEL_PLATFORM_WINREG_H

#include "winbase.h"

#define HKEY_CLASSES_ROOT ((HKEY)(ULONG_PTR)(LONG)0x80000000)
#define HKEY_CURRENT_USER ((HKEY)(ULONG_PTR)(LONG)0x80000001)
#define HKEY_LOCAL_MACHINE ((HKEY)(ULONG_PTR)(LONG)0x80000002)

#define REG_NONE 0
#define REG_SZ 1
#define REG_BINARY 3
#define REG_DWORD 4

#define REG_OPTION_NON_VOLATILE 0
#define REG_CREATED_NEW_KEY 1
#define REG_OPENED_EXISTING_KEY 2

#define KEY_QUERY_VALUE 0x00001
#define KEY_SET_VALUE 0x00002
#define KEY_CREATE_SUB_KEY 0x00004
#define KEY_READ 0x20019
#define KEY_WRITE 0x20006
#define KEY_ALL_ACCESS 0xF003F

typedef DWORD REGSAM;

ORVEL_API_BEGIN

LONG WINAPI RegOpenKeyExA(HKEY key, LPCSTR subKey, DWORD options, REGSAM access, PHKEY result);
LONG WINAPI RegCreateKeyExA(HKEY key, LPCSTR subKey, DWORD reserved, LPSTR className, DWORD options,
                            REGSAM access, const SECURITY_ATTRIBUTES *security, PHKEY result,
                            LPDWORD disposition);
LONG WINAPI RegCloseKey(HKEY key);
LONG WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                             LPDWORD size);
LONG WINAPI RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE *data,
                           DWORD size);

ORVEL_API_END

#endif
