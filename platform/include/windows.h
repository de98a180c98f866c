// The part of the Windows interface that the library and its hosts call, for targets that have no
// Windows: the same names, types and results, carried out by liborvel-platform. The subject headers
// are named as the system's own are. Usable from C and C++. What nobody calls isn't declared.
#ifndef ORVEL_PLATFORM_WINDOWS_H
#define ORVEL_PLATFORM_WINDOWS_H

#include "windef.h"
#include "winbase.h"
#include "wingdi.h"
#include "winnls.h"
#include "winreg.h"
#include "winuser.h"

#endif
