// Memory, modules, files and folders, time, the last error.
#ifndef ORVEL_PLATFORM_WINBASE_H
#define ORVEL_PLATFORM_WINBASE_H

#include "windef.h"

#define ERROR_SUCCESS 0
#define ERROR_FILE_NOT_FOUND 2
#define ERROR_PATH_NOT_FOUND 3
#define ERROR_TOO_MANY_OPEN_FILES 4
#define ERROR_ACCESS_DENIED 5
#define ERROR_INVALID_HANDLE 6
#define ERROR_NOT_ENOUGH_MEMORY 8
#define ERROR_GEN_FAILURE 31
#define ERROR_INVALID_PARAMETER 87
#define ERROR_DISK_FULL 112
#define ERROR_INSUFFICIENT_BUFFER 122
#define ERROR_INVALID_NAME 123
#define ERROR_MOD_NOT_FOUND 126
#define ERROR_PROC_NOT_FOUND 127
#define ERROR_BAD_PATHNAME 161
#define ERROR_ALREADY_EXISTS 183
#define ERROR_BAD_EXE_FORMAT 193
#define ERROR_FILENAME_EXCED_RANGE 206
#define ERROR_MORE_DATA 234
#define ERROR_INVALID_FLAGS 1004
#define ERROR_REGISTRY_IO_FAILED 1016
#define ERROR_KEY_DELETED 1018
#define ERROR_NO_UNICODE_TRANSLATION 1113
#define ERROR_DLL_INIT_FAILED 1114
#define ERROR_INVALID_WINDOW_HANDLE 1400
#define ERROR_INVALID_HOOK_HANDLE 1404
#define ERROR_TLW_WITH_WSCHILD 1406
#define ERROR_CANNOT_FIND_WND_CLASS 1407
#define ERROR_CLASS_ALREADY_EXISTS 1410
#define ERROR_CLASS_DOES_NOT_EXIST 1411
#define ERROR_CLASS_HAS_WINDOWS 1412
#define ERROR_INVALID_INDEX 1413
#define ERROR_CONTROL_ID_NOT_FOUND 1421
#define ERROR_INVALID_HOOK_FILTER 1426
#define ERROR_RESOURCE_NAME_NOT_FOUND 1814
#define ERROR_NOT_ENOUGH_QUOTA 1816

#define GMEM_FIXED 0x0000
#define GMEM_ZEROINIT 0x0040
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)

#define FILE_ATTRIBUTE_READONLY 0x00000001
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020
#define FILE_ATTRIBUTE_NORMAL 0x00000080
#define INVALID_FILE_ATTRIBUTES ((DWORD)-1)

#define WAIT_OBJECT_0 0
#define WAIT_ABANDONED 0x80
#define WAIT_TIMEOUT 258
#define WAIT_FAILED ((DWORD)-1)

#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3

typedef struct _SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
} SECURITY_ATTRIBUTES, *LPSECURITY_ATTRIBUTES;

ORVEL_API_BEGIN

DWORD WINAPI GetLastError(void);
void WINAPI SetLastError(DWORD code);
/* Only named mutexes; each is shared by all processes of the user, whatever the prefix. */
HANDLE WINAPI CreateMutexA(LPSECURITY_ATTRIBUTES attributes, BOOL owned, LPCSTR name);
DWORD WINAPI WaitForSingleObject(HANDLE handle, DWORD milliseconds);
BOOL WINAPI ReleaseMutex(HANDLE handle);
BOOL WINAPI CloseHandle(HANDLE handle);

HANDLE WINAPI GetCurrentProcess(void);
DWORD WINAPI GetCurrentThreadId(void);
DWORD WINAPI GetTickCount(void);
void WINAPI Sleep(DWORD milliseconds);

/* Blocks are fixed, so a handle is the pointer. Only the flags above are known. */
HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size);
HGLOBAL WINAPI GlobalFree(HGLOBAL block);

/* A module's handle is the address that it is loaded at. A bare name is sought among the loaded
   modules and beside the program, and nowhere else. Exports are found by name only. */
HMODULE WINAPI LoadLibraryA(LPCSTR fileName);
BOOL WINAPI FreeLibrary(HMODULE module);
FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);
HMODULE WINAPI GetModuleHandleA(LPCSTR moduleName);
DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);

/* Paths have backslashes; a drive letter is dropped; upper and lower case stay different. */
BOOL WINAPI CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security);
BOOL WINAPI DeleteFileA(LPCSTR path);
DWORD WINAPI GetFileAttributesA(LPCSTR path);

ORVEL_API_END

#endif
