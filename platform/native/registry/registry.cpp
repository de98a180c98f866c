// Keys and values as Windows hands them out, for the library's options and folders. A key's handle
// is a number of a slot with its path and its rights; the key itself stands in the registry's file
// alone, so every call asks the file anew.
#include <assert.h>
#include <stdlib.h>
#include <string.h>

#include "registry/registry_file.h"
#include "runtime.h"

constexpr int kMaxOpenKeys = 256;
constexpr unsigned kGenerations = 0x7fff;
constexpr int kMaxKeyDepth = 512;                  // parts of a path
static_assert((kMaxOpenKeys + 1) << 2 <= 0x1000);  // a handle has 12 bits for its slot

struct OpenKey {
    char *path;           // owned, the whole one; null: the slot is free
    REGSAM access;        // what the handle may be used for
    unsigned generation;  // goes up each time the slot is given out
};

struct RegistryState {
    OpenKey keys[kMaxOpenKeys];
};
static RegistryState gRegistry;

struct RootKey {
    HKEY handle;       // the number that every program knows
    const char *path;  // under which the file has its keys
};
static const RootKey kRootKeys[] = {
    {HKEY_CLASSES_ROOT, "HKEY_LOCAL_MACHINE\\Software\\Classes"},
    {HKEY_CURRENT_USER, "HKEY_CURRENT_USER"},
    {HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE"},
};

// What a call works with: the text of the file, one line of it, and room for one value's data.
struct Session {
    RegistryText text;  // owned
    RegistryLine line;  // the last one that was parsed; its data are owned, kMaxValueSize bytes
    HANDLE lock;        // of LockRegistry; null while only reading
};

// --- handles ---

// generation << 12 | slot + 1 << 2: never a root's number, and a closed handle isn't taken for the
// key that has its slot now.
static HKEY KeyHandle(int slot)
{
    return reinterpret_cast<HKEY>(
        ULONG_PTR((gRegistry.keys[slot].generation << 12) | unsigned(slot + 1) << 2));
}

static OpenKey *FindOpenKey(HKEY key)
{
    ULONG_PTR slot = ((reinterpret_cast<ULONG_PTR>(key) & 0xfff) >> 2) - 1;
    if (slot < kMaxOpenKeys && gRegistry.keys[slot].path && KeyHandle(int(slot)) == key)
        return &gRegistry.keys[slot];
    return nullptr;
}

// The path and the rights behind a handle; none for one that isn't open.
static const char *KeyPath(HKEY key, REGSAM *access)
{
    *access = KEY_ALL_ACCESS;
    for (const RootKey &root : kRootKeys) {
        if (root.handle == key)
            return root.path;
    }
    OpenKey *open = FindOpenKey(key);
    if (!open)
        return nullptr;
    *access = open->access;
    return open->path;
}

// A new handle; each call gives another, for the same key too.
static LONG OpenSlot(const char *path, REGSAM access, HKEY *result)
{
    for (int i = 0; i < kMaxOpenKeys; ++i) {
        OpenKey *slot = &gRegistry.keys[i];
        if (slot->path)
            continue;
        slot->path = strdup(path);
        if (!slot->path)
            break;
        slot->access = access;
        slot->generation = slot->generation % kGenerations + 1;
        *result = KeyHandle(i);
        return ERROR_SUCCESS;
    }
    return ERROR_NOT_ENOUGH_MEMORY;
}

// A root may be closed, which does nothing.
LONG WINAPI RegCloseKey(HKEY key)
{
    REGSAM access;
    if (!KeyPath(key, &access))
        return ERROR_INVALID_HANDLE;
    OpenKey *open = FindOpenKey(key);
    if (open) {
        free(open->path);
        open->path = nullptr;
    }
    return ERROR_SUCCESS;
}

// --- paths ---

// Appends one part of a key's path. The caller has room for kMaxKeyPath bytes; what is longer is
// refused whole.
static LONG AppendPart(char *path, size_t *length, const char *part, size_t partLength)
{
    if (partLength > kMaxKeyName || *length + 1 + partLength >= kMaxKeyPath)
        return ERROR_INVALID_PARAMETER;
    path[(*length)++] = '\\';
    memcpy(path + *length, part, partLength);
    *length += partLength;
    path[*length] = '\0';
    return ERROR_SUCCESS;
}

// The whole path of a key below another. Backslashes at the end or in a row separate nothing.
static LONG ResolveKey(HKEY key, const char *subKey, char *path, REGSAM *access)
{
    const char *base = KeyPath(key, access);
    if (!base)
        return ERROR_INVALID_HANDLE;
    size_t length = strlen(base);
    assert(length < kMaxKeyPath);  // a handle's path was resolved here before
    memcpy(path, base, length + 1);
    if (!subKey)
        return ERROR_SUCCESS;
    if (subKey[0] == '\\' && key != HKEY_CLASSES_ROOT)
        return ERROR_BAD_PATHNAME;
    for (;;) {
        subKey += strspn(subKey, "\\");
        size_t partLength = strcspn(subKey, "\\");
        if (partLength == 0)
            return ERROR_SUCCESS;
        LONG result = AppendPart(path, &length, subKey, partLength);
        if (result != ERROR_SUCCESS)
            return result;
        subKey += partLength;
    }
}

// A root needs no line in the file: it is always there.
static bool IsRootPath(const char *path)
{
    for (const RootKey &root : kRootKeys) {
        if (CompareNoCase(path, root.path) == 0)
            return true;
    }
    return false;
}

// Whether `path` is `key` or stands above it.
static bool IsAtOrAbove(const char *path, const char *key)
{
    char start[kMaxKeyPath];
    size_t length = strlen(path);
    if (strlen(key) < length || (key[length] != '\0' && key[length] != '\\'))
        return false;
    memcpy(start, key, length);
    start[length] = '\0';
    return CompareNoCase(start, path) == 0;
}

// --- sessions ---

// Gives all back, the lock at last.
static void EndSession(Session *session)
{
    if (!session)
        return;
    FreeRegistryText(&session->text);
    if (session->lock)
        UnlockRegistry(session->lock);
    free(session->line.data);
    free(session);
}

// The file as it stands now; for writing it stays so until the session ends.
static LONG BeginSession(bool forWriting, Session **result)
{
    *result = nullptr;
    Session *session = static_cast<Session *>(calloc(1, sizeof *session));
    BYTE *data = static_cast<BYTE *>(malloc(kMaxValueSize));
    if (!session || !data) {
        free(session);
        free(data);
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    session->line.data = data;
    session->lock = forWriting ? LockRegistry() : nullptr;
    LONG code = ERROR_REGISTRY_IO_FAILED;
    if (!forWriting || session->lock)
        code = ReadRegistry(&session->text);
    if (code == ERROR_SUCCESS)
        *result = session;
    else
        EndSession(session);
    return code;
}

// A key is there when a line names it or one below it. Leaves that line in the session.
static bool KeyExists(Session *session, const char *path)
{
    size_t place = 0;
    if (IsRootPath(path))
        return true;
    while (place < session->text.size) {
        if (ParseRegistryLine(&session->text, &place, &session->line) &&
            IsAtOrAbove(path, session->line.key))
            return true;
    }
    return false;
}

// Leaves the value in the session's line.
static bool FindValue(Session *session, const char *path, const char *name)
{
    size_t place = 0;
    while (place < session->text.size) {
        const RegistryLine *line = &session->line;
        if (ParseRegistryLine(&session->text, &place, &session->line) && line->isValue &&
            CompareNoCase(line->name, name) == 0 && CompareNoCase(line->key, path) == 0)
            return true;
    }
    return false;
}

// --- keys ---

// Rights aren't asked of the file: they bind the handle alone.
LONG WINAPI RegOpenKeyExA(HKEY key, LPCSTR subKey, DWORD, REGSAM access, PHKEY result)
{
    char path[kMaxKeyPath];
    REGSAM ignored;
    Session *session;
    if (!result)
        return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    LONG code = ResolveKey(key, subKey, path, &ignored);
    if (code == ERROR_SUCCESS)
        code = BeginSession(false, &session);
    if (code != ERROR_SUCCESS)
        return code;
    code = KeyExists(session, path) ? OpenSlot(path, access, result) : ERROR_FILE_NOT_FOUND;
    EndSession(session);
    return code;
}

// For a write that only adds lines.
static bool KeepAll(const RegistryLine *, void *)
{
    return true;
}

// A new key brings those above it that aren't there yet; each gets its line.
static LONG AddKeys(Session *session, const char *path)
{
    RegistryLine *added = static_cast<RegistryLine *>(calloc(kMaxKeyDepth, sizeof *added));
    size_t length = strlen(path), i = 0;
    int count = 0;
    if (!added)
        return ERROR_NOT_ENOUGH_MEMORY;
    for (; i <= length && count < kMaxKeyDepth; ++i) {
        if (path[i] != '\\' && path[i] != '\0')
            continue;
        memcpy(added[count].key, path, i);
        added[count].key[i] = '\0';
        count += !KeyExists(session, added[count].key);
    }
    LONG code = ERROR_INVALID_PARAMETER;  // too deep
    if (i > length)
        code = WriteRegistry(&session->text, KeepAll, nullptr, added, count);
    free(added);
    return code;
}

// Under the lock: another process may have made it between the question and this call.
static LONG CreateKey(const char *path, REGSAM access, PHKEY result, DWORD *disposition)
{
    Session *session;
    LONG code = BeginSession(true, &session);
    if (code != ERROR_SUCCESS)
        return code;
    bool isThere = KeyExists(session, path);
    *disposition = isThere ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
    if (!isThere)
        code = AddKeys(session, path);
    EndSession(session);
    return code == ERROR_SUCCESS ? OpenSlot(path, access, result) : code;
}

// Opening is tried first, without the lock: nearly always the key is there, and a process that may
// only read can open it this way.
LONG WINAPI RegCreateKeyExA(HKEY key, LPCSTR subKey, DWORD reserved, LPSTR, DWORD, REGSAM access,
                            const SECURITY_ATTRIBUTES *, PHKEY result, LPDWORD disposition)
{
    char path[kMaxKeyPath];
    REGSAM ignored;  // whether a key may be made is asked of the key above, not of its handle
    if (reserved || !result)
        return ERROR_INVALID_PARAMETER;
    LONG code = ResolveKey(key, subKey, path, &ignored);
    if (code != ERROR_SUCCESS)
        return code;
    // What is there needs no change of the file.
    code = RegOpenKeyExA(key, subKey, 0, access, result);
    DWORD told = REG_OPENED_EXISTING_KEY;
    if (code == ERROR_FILE_NOT_FOUND)
        code = CreateKey(path, access, result, &told);
    if (code == ERROR_SUCCESS && disposition)
        *disposition = told;
    return code;
}

// --- values ---

struct ValueName {
    char key[kMaxKeyPath];     // the whole path
    char name[kMaxValueName];  // empty: the key's default value
};

// What a call on a value names, once the handle allows it; no name is the key's default value.
static LONG NameValue(HKEY key, const char *name, REGSAM wanted, ValueName *value)
{
    REGSAM access;
    const char *path = KeyPath(key, &access);
    if (!path)
        return ERROR_INVALID_HANDLE;
    if (!(access & wanted))
        return ERROR_ACCESS_DENIED;
    if (!name)
        name = "";
    if (strlen(name) >= kMaxValueName)
        return ERROR_INVALID_PARAMETER;
    memcpy(value->key, path, strlen(path) + 1);
    memcpy(value->name, name, strlen(name) + 1);
    return ERROR_SUCCESS;
}

// A value that doesn't fit leaves the buffer alone; a text without its end gets one where there is
// room, but its size doesn't count it.
static LONG HandOver(const RegistryLine *line, LPDWORD type, LPBYTE data, LPDWORD size)
{
    DWORD room = size ? *size : 0;
    if (type)
        *type = line->type;
    if (size)
        *size = line->size;
    if (!data)
        return ERROR_SUCCESS;
    if (line->size > room)
        return ERROR_MORE_DATA;
    memcpy(data, line->data, line->size);
    if (line->type == REG_SZ && line->size > 0 && line->size < room && data[line->size - 1])
        data[line->size] = '\0';
    return ERROR_SUCCESS;
}

// A key that has gone since its handle was opened is told apart from a value that isn't there.
LONG WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                             LPDWORD size)
{
    ValueName value;
    Session *session;
    if (reserved || (data && !size))
        return ERROR_INVALID_PARAMETER;
    LONG code = NameValue(key, name, KEY_QUERY_VALUE, &value);
    if (code == ERROR_SUCCESS)
        code = BeginSession(false, &session);
    if (code != ERROR_SUCCESS)
        return code;
    if (FindValue(session, value.key, value.name))
        code = HandOver(&session->line, type, data, size);
    else
        code = KeyExists(session, value.key) ? ERROR_FILE_NOT_FOUND : ERROR_KEY_DELETED;
    EndSession(session);
    return code;
}

// For a write that puts another line in the value's place.
static bool KeepOtherValues(const RegistryLine *line, void *context)
{
    const ValueName *value = static_cast<const ValueName *>(context);
    return !line->isValue || CompareNoCase(line->name, value->name) != 0 ||
           CompareNoCase(line->key, value->key) != 0;
}

// The session's line, which the search for the key has used before.
static void FillLine(RegistryLine *line, const ValueName *value, DWORD type, const BYTE *data,
                     DWORD size)
{
    memcpy(line->key, value->key, sizeof line->key);
    memcpy(line->name, value->name, sizeof line->name);
    line->isValue = true;
    line->type = type;
    line->size = size;
    if (size)
        memcpy(line->data, data, size);
}

// The old line of the value goes, the new one comes to the end of the file.
static LONG StoreValue(const ValueName *value, DWORD type, const BYTE *data, DWORD size)
{
    Session *session;
    LONG code = BeginSession(true, &session);
    if (code != ERROR_SUCCESS)
        return code;
    if (!KeyExists(session, value->key)) {
        code = ERROR_KEY_DELETED;
    } else {
        FillLine(&session->line, value, type, data, size);
        code = WriteRegistry(&session->text, KeepOtherValues, const_cast<ValueName *>(value),
                             &session->line, 1);
    }
    EndSession(session);
    return code;
}

// Data of any type are kept as they come; only the end of a text is looked after.
LONG WINAPI RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE *data,
                           DWORD size)
{
    ValueName value;
    if (reserved || (!data && size))
        return ERROR_INVALID_PARAMETER;
    LONG code = NameValue(key, name, KEY_SET_VALUE, &value);
    if (code != ERROR_SUCCESS)
        return code;
    // A caller that forgot to count the end of its text gets it counted, as Windows does.
    if (type == REG_SZ && size && data[size - 1] && !data[size])
        ++size;
    if (size > kMaxValueSize)
        return ERROR_NOT_ENOUGH_MEMORY;
    return StoreValue(&value, type, data, size);
}
