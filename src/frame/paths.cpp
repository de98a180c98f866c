// Folders and paths. Both folders are looked up at each use, so that a host that registers them
// late or a folder deleted meanwhile does no harm.
#include "frame/paths.h"

#include <cstring>

#include <shlobj.h>

#include "frame/strings.h"
#include "orvel.h"

struct PathBlocks {
    char install[kPathSize];  // of the last InstallFilePath
    char data[kPathSize];     // of the last DataFilePath
    char given[kPathSize];    // the install folder of a host that brings its own, else empty
};
static PathBlocks gPaths;

int GiveInstallFolder(const char *folder)
{
    return CopyWhole(gPaths.given, kPathSize, folder) > 0;
}

int ReadInstallFolder(char *buffer, DWORD capacity)
{
    if (gPaths.given[0])
        return CopyWhole(buffer, capacity, gPaths.given) > 0;
    HKEY key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, KEY_READ, &key))
        return 0;
    DWORD length = capacity;
    LONG failure = RegQueryValueExA(key, "Install", nullptr, nullptr, AsBytes(buffer), &length);
    RegCloseKey(key);
    return !failure && TerminateText(buffer, capacity, length) && buffer[0];
}

char *JoinPath(char *target, const char *folder, const char *name)
{
    size_t length = strlen(folder);
    bool needsSlash = length > 0 && folder[length - 1] != '\\';
    if (length + needsSlash + strlen(name) >= kPathSize)
        return nullptr;
    memmove(target, folder, length);
    if (needsSlash)
        target[length++] = '\\';
    strcpy(target + length, name);
    return target;
}

const char *InstallFilePath(const char *name)
{
    if (!ReadInstallFolder(gPaths.install, kPathSize))
        return nullptr;
    return JoinPath(gPaths.install, gPaths.install, name);
}

char *GetDataFolder(char *buffer)
{
    if (SHGetFolderPathA(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, buffer))
        return nullptr;
    if (!JoinPath(buffer, buffer, "Orvel"))
        return nullptr;
    CreateDirectoryA(buffer, nullptr);  // it mostly exists; a file operation in it fails by itself
    return buffer;
}

const char *DataFilePath(const char *name)
{
    if (!GetDataFolder(gPaths.data))
        return nullptr;
    return JoinPath(gPaths.data, gPaths.data, name);
}

int WINAPI GetOrvelAppDir(char *buffer, DWORD size)
{
    char folder[kPathSize];
    if (!buffer || !ReadInstallFolder(folder, kPathSize))
        return 0;
    return CopyWhole(buffer, size, folder);
}

int WINAPI GetOrvelDataDir(char *buffer, DWORD size)
{
    char folder[kPathSize];
    if (!buffer || !GetDataFolder(folder))
        return 0;
    return CopyWhole(buffer, size, folder);
}
