// A host's message loop, and keys as a person presses them.
#pragma once

#include <windows.h>

// All that waits in the queue, as a host that knows nothing of dialogs hands it out.
inline void DrainMessages()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

inline void PressKey(BYTE key)
{
    keybd_event(key, 0, 0, 0);
    DrainMessages();
    keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    DrainMessages();
}
