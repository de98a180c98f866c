// Values of the user's registry key. The key is opened for each use: a host can change it at any
// time.
#include "settings/registry.h"

#include "frame/records.h"

constexpr REGSAM kReadAccess = 0x20019, kFullAccess = 0xF003F;

int HasUserKey()
{
    HKEY key;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, kRegistryKey, 0, kReadAccess, &key))
        return 0;
    RegCloseKey(key);
    return 1;
}

int ReadUserValue(const char *name, void *data, DWORD *size)
{
    HKEY key;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, kRegistryKey, 0, kReadAccess, &key))
        return 0;
    LONG failure = RegQueryValueExA(key, name, nullptr, nullptr, static_cast<BYTE *>(data), size);
    RegCloseKey(key);
    return !failure;
}

int WriteUserValue(const char *name, DWORD type, const void *data, DWORD size)
{
    HKEY key;
    char noClass[] = "";
    if (RegCreateKeyExA(HKEY_CURRENT_USER, kRegistryKey, 0, noClass, 0, kFullAccess, nullptr, &key,
                        nullptr))
        return 0;
    LONG failure = RegSetValueExA(key, name, 0, type, static_cast<const BYTE *>(data), size);
    RegCloseKey(key);
    return !failure;
}

DWORD ReadUserNumber(const char *name, DWORD standard)
{
    DWORD number = standard, size = sizeof number;
    return ReadUserValue(name, &number, &size) ? number : standard;
}

void KeepUserNumber(const char *name, DWORD number)
{
    if (HasUserKey())
        WriteUserValue(name, REG_DWORD, &number, sizeof number);
}
