// The library's start and end. LibMain and Initialize are declared in orvel.h; this is what the
// rest of the library may ask.
#pragma once

#include "frame/records.h"

// The registered window message behind one of the eleven.
inline UINT RegisteredMessage(DialogMessage message)
{
    return gProcess.messages[message];
}
