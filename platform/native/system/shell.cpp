// The folder for data that programs share, where the library keeps its list of fonts and the
// companion its dictionaries; and the common controls, which are always there here.
#include <commctrl.h>
#include <shlobj.h>
#include <string.h>
#include <sys/stat.h>

#include "system/paths.h"

// A folder, not a file of that name.
static bool IsThere(const char *native)
{
    struct stat status;
    return stat(native, &status) == 0 && S_ISDIR(status.st_mode);
}

HRESULT WINAPI SHGetFolderPathA(HWND, int folder, HANDLE, DWORD, LPSTR path)
{
    char native[kNativePathSize];
    if (!path)
        return E_INVALIDARG;
    path[0] = '\0';
    if ((folder & ~CSIDL_FLAG_CREATE) != CSIDL_COMMON_APPDATA)
        return E_INVALIDARG;
    if (!EnvironmentFolder("XDG_DATA_HOME", ".local/share", native, sizeof native))
        return E_FAIL;
    // The caller has room for MAX_PATH bytes and doesn't say so: a longer path is none.
    if (strlen(native) >= MAX_PATH)
        return E_FAIL;
    if ((folder & CSIDL_FLAG_CREATE) ? !MakeFolders(native) : !IsThere(native))
        return E_FAIL;
    FromNativePath(native, path, MAX_PATH);
    return S_OK;
}

void WINAPI InitCommonControls() {}
