// Common controls are always there; starting them does nothing.
#ifndef ORVEL_PLATFORM_COMMCTRL_H
#define ORVEL_PLATFORM_COMMCTRL_H

#include "windows.h"

ORVEL_API_BEGIN

void WINAPI InitCommonControls(void);

ORVEL_API_END

#endif
