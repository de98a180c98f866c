// The list of window classes. The same name may stand in it once for each module and once for the
// layer; a module's own goes before the layer's.
#include "windows/classes.h"

#include <assert.h>
#include <stdlib.h>

#include "windows/atoms.h"

struct ClassList {
    WindowClass *first;  // owned but for the layer's own, as all behind it
};
static ClassList gClasses;

// That of this module alone, or the layer's own for null.
static WindowClass *FindOwnClass(ATOM atom, HINSTANCE instance)
{
    WindowClass *found = atom ? gClasses.first : nullptr;
    while (found && (found->atom != atom || found->instance != instance))
        found = found->next;
    return found;
}

// A module may have a class of its own under one of the layer's names.
WindowClass *FindWindowClass(const char *nameOrAtom, HINSTANCE instance)
{
    ATOM atom = FindAtom(nameOrAtom);
    WindowClass *found = FindOwnClass(atom, instance);
    return found ? found : FindOwnClass(atom, nullptr);
}

// In front, so that the newest is found first.
static void AddClass(WindowClass *added)
{
    added->next = gClasses.first;
    gClasses.first = added;
}

void AddSystemClass(WindowClass *added, const char *name)
{
    assert(!added->atom && !added->instance && added->procedure);
    added->atom = AtomOfName(name);
    AddClass(added);
}

HINSTANCE InstanceOrProgram(HINSTANCE instance)
{
    return instance ? instance : GetModuleHandleA(nullptr);
}

// Of the record only procedure, module and name mean anything here: there are no icons, no cursors
// and no bytes of the program's own.
ATOM WINAPI RegisterClassA(const WNDCLASSA *windowClass)
{
    HINSTANCE instance = InstanceOrProgram(windowClass->hInstance);
    ATOM atom = windowClass->lpfnWndProc ? AtomOfName(windowClass->lpszClassName) : 0;
    if (!atom) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (FindOwnClass(atom, instance)) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return 0;
    }
    WindowClass *added = static_cast<WindowClass *>(malloc(sizeof *added));
    if (!added) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    *added = {nullptr, atom, instance, windowClass->lpfnWndProc, 0, 0};
    AddClass(added);
    return atom;
}

// A class that still has windows stays: they hold a pointer to it.
BOOL WINAPI UnregisterClassA(LPCSTR className, HINSTANCE instance)
{
    WindowClass *gone = FindOwnClass(FindAtom(className), InstanceOrProgram(instance));
    if (!gone || gone->windows > 0) {
        SetLastError(gone ? ERROR_CLASS_HAS_WINDOWS : ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    WindowClass **link = &gClasses.first;
    while (*link != gone)
        link = &(*link)->next;
    *link = gone->next;
    free(gone);  // never one of the layer's own: those have no instance
    return TRUE;
}
