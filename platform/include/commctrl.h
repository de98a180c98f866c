// Common controls are always there; starting them does nothing.
#ifndef ORVEL_PLATFORM_COMMCTRL_H
#define ORVEL_PLATFORM_COMMCTRL_H

#include "windows.h"

#define PROGRESS_CLASSA "msctls_progress32"
#define PBM_SETRANGE (WM_USER + 1)
#define PBM_SETPOS (WM_USER + 2)
#define PBM_GETPOS (WM_USER + 8)

ORVEL_API_BEGIN

void WINAPI InitCommonControls(void);

ORVEL_API_END

#endif
