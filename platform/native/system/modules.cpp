// Modules, for the bridge to the companion and for hosts that load the library. A handle is the
// address that the module is loaded at, as on Windows, so there is no table to keep: the dynamic
// loader answers every question about it, and a dead handle is an address at which it knows no
// module.
#include "system/modules.h"

#include <dlfcn.h>
#include <errno.h>
#include <inttypes.h>
#include <link.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include "runtime.h"
#include "system/paths.h"

struct LoaderState {
    HMODULE refused;  // the module whose entry point said no during the current load
};
static LoaderState gLoader;

HMODULE ModuleOfAddress(const void *address)
{
    Dl_info info;
    return dladdr(address, &info) ? static_cast<HMODULE>(info.dli_fbase) : nullptr;
}

void RefuseModule(HMODULE module)
{
    gLoader.refused = module;
}

// The kernel tells where the program's headers stand; they are a part of the program itself.
static HMODULE ProgramModule()
{
    return ModuleOfAddress(reinterpret_cast<const void *>(getauxval(AT_PHDR)));
}

// Whether a handle is alive: the address that a loaded module begins at.
static bool IsModule(HMODULE module)
{
    return module && ModuleOfAddress(module) == module;
}

// The path of the file that is mapped at an address, out of the kernel's list of mappings: what the
// loader remembers may be relative to a folder of long ago.
static bool MappedFile(FILE *maps, const void *address, char *native, int nativeSize)
{
    char line[kNativePathSize + 128];
    while (fgets(line, sizeof line, maps)) {
        uintptr_t start = 0;
        if (sscanf(line, "%" SCNxPTR "-", &start) != 1 ||
            start != reinterpret_cast<uintptr_t>(address))
            continue;
        const char *path = strchr(line, '/');
        size_t length = path ? strcspn(path, "\n") : 0;
        if (length == 0 || length >= size_t(nativeSize))
            return false;
        memcpy(native, path, length);
        native[length] = '\0';
        return true;
    }
    return false;
}

// The path of the module's file; false when the kernel doesn't tell it or it doesn't fit.
static bool ModuleFile(HMODULE module, char *native, int nativeSize)
{
    FILE *maps = fopen("/proc/self/maps", "re");
    if (!maps)
        return false;
    bool found = MappedFile(maps, module, native, nativeSize);
    fclose(maps);
    return found;
}

// A second count on a module that is loaded already; none for a dead handle.
static void *OpenAgain(HMODULE module)
{
    char native[kNativePathSize];
    if (!IsModule(module))
        return nullptr;
    if (module == ProgramModule())
        return dlopen(nullptr, RTLD_NOW);
    if (!ModuleFile(module, native, sizeof native))
        return nullptr;
    return dlopen(native, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
}

struct NameSearch {
    const char *name;  // without folder, with extension
    HMODULE found;
};

static const char *BaseName(const char *native)
{
    const char *slash = strrchr(native, '/');
    return slash ? slash + 1 : native;
}

// Called by the loader for each module; a number other than 0 ends its walk.
static int MatchLoaded(dl_phdr_info *info, size_t, void *data)
{
    NameSearch *search = static_cast<NameSearch *>(data);
    if (!info->dlpi_name || CompareNoCase(BaseName(info->dlpi_name), search->name) != 0)
        return 0;
    search->found = ModuleOfAddress(info->dlpi_phdr);
    return search->found != nullptr;
}

// A loaded module by its file's name, in any case; null when there is none.
static HMODULE FindLoaded(const char *name)
{
    NameSearch search = {name, nullptr};
    dl_iterate_phdr(MatchLoaded, &search);
    return search.found;
}

// Copies the module's name as a native path, with ".dll" where it has no extension (a point at the
// end stands for none and is dropped).
static bool ModuleName(const char *given, char *native, int nativeSize)
{
    if (!ToNativePath(given, native, nativeSize))
        return false;
    size_t length = strlen(native);
    const char *point = strrchr(BaseName(native), '.');
    if (point && point[1] != '\0')
        return true;
    if (point)
        native[--length] = '\0';
    else if (length + 4 < size_t(nativeSize))
        memcpy(native + length, ".dll", 5);
    return true;
}

// The path of this name in the program's own folder; false when that can't be told.
static bool BesideProgram(const char *name, char *native, int nativeSize)
{
    char program[kNativePathSize];
    ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
    if (length <= 0)
        return false;
    program[length] = '\0';
    char *slash = strrchr(program, '/');
    if (!slash)
        return false;
    *slash = '\0';
    return JoinNative(program, name, native, nativeSize);
}

// Without a slash in its name the loader would search the whole system, so it always gets one.
static bool LocateModule(const char *name, char *native, int nativeSize)
{
    char resolved[kNativePathSize];
    if (!strchr(name, '/')) {
        if (!BesideProgram(name, native, nativeSize))
            return false;
    } else if (!realpath(name, resolved) || strlen(resolved) >= size_t(nativeSize)) {
        return false;
    } else {
        memcpy(native, resolved, strlen(resolved) + 1);
    }
    struct stat status;
    return stat(native, &status) == 0 && S_ISREG(status.st_mode);
}

// The module's entry point runs inside of dlopen and can only leave a note that it refuses.
static HMODULE LoadFile(const char *native)
{
    gLoader.refused = nullptr;
    void *library = dlopen(native, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return nullptr;
    }
    link_map *map = nullptr;
    dlinfo(library, RTLD_DI_LINKMAP, &map);
    HMODULE module = ModuleOfAddress(map->l_ld);
    if (gLoader.refused != module)
        return module;
    gLoader.refused = nullptr;
    dlclose(library);
    SetLastError(ERROR_DLL_INIT_FAILED);
    return nullptr;
}

// A bare name means a module that is loaded already, wherever it came from, and only then the file
// of that name beside the program. A module whose entry point refuses is unloaded again.
HMODULE WINAPI LoadLibraryA(LPCSTR fileName)
{
    char name[kNativePathSize];
    char native[kNativePathSize];
    if (!fileName || !ModuleName(fileName, name, sizeof name)) {
        SetLastError(fileName ? ERROR_MOD_NOT_FOUND : ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    HMODULE loaded = strchr(name, '/') ? nullptr : FindLoaded(name);
    if (loaded && OpenAgain(loaded))
        return loaded;
    if (!LocateModule(name, native, sizeof native)) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    return LoadFile(native);
}

// To count down a module the loader needs its own handle, which only another count can give.
BOOL WINAPI FreeLibrary(HMODULE module)
{
    void *library = OpenAgain(module);
    if (!library) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return FALSE;
    }
    dlclose(library);  // the count of the question
    if (module != ProgramModule())
        dlclose(library);  // the count of LoadLibraryA
    return TRUE;
}

// By name only: the modules here have no ordinals.
FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name)
{
    void *library = OpenAgain(module ? module : ProgramModule());
    if (!library) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    bool isOrdinal = reinterpret_cast<ULONG_PTR>(name) <= 0xffff;
    void *found = isOrdinal ? nullptr : dlsym(library, name);
    dlclose(library);
    // The loader also looks into the modules that this one needs; those are not its exports.
    if (found && ModuleOfAddress(found) == (module ? module : ProgramModule()))
        return reinterpret_cast<FARPROC>(found);
    SetLastError(ERROR_PROC_NOT_FOUND);
    return nullptr;
}

// Without a count of its own: the handle lives as long as whoever loaded the module wants.
HMODULE WINAPI GetModuleHandleA(LPCSTR moduleName)
{
    char name[kNativePathSize];
    char resolved[kNativePathSize];
    if (!moduleName)
        return ProgramModule();
    HMODULE module = nullptr;
    if (ModuleName(moduleName, name, sizeof name) && strchr(name, '/')) {
        void *library =
            realpath(name, resolved) ? dlopen(resolved, RTLD_NOW | RTLD_NOLOAD) : nullptr;
        link_map *map = nullptr;
        if (library && dlinfo(library, RTLD_DI_LINKMAP, &map) == 0)
            module = ModuleOfAddress(map->l_ld);
        if (library)
            dlclose(library);
    } else {
        module = FindLoaded(name);
    }
    if (!module)
        SetLastError(ERROR_MOD_NOT_FOUND);
    return module;
}

// With backslashes; a path that doesn't fit is cut and ended, and the last error tells.
DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size)
{
    char native[kNativePathSize];
    char path[kNativePathSize];
    if (!module)
        module = ProgramModule();
    if (!IsModule(module) || !ModuleFile(module, native, sizeof native)) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return 0;
    }
    DWORD length = DWORD(FromNativePath(native, path, sizeof path));
    if (length < size) {
        memcpy(buffer, path, length + 1);
        SetLastError(ERROR_SUCCESS);
        return length;
    }
    if (size > 0) {
        memcpy(buffer, path, size - 1);
        buffer[size - 1] = '\0';
    }
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
}
