// Modeless dialogs as a host has them: the library attached to the test program, a window of the
// host's, and what that window heard.
#pragma once

#include <string>
#include <vector>

#include "platform/message_loop.h"
#include "support/started_library.h"

inline void SetProcedure(HWND window, WNDPROC procedure)
{
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

class AttachedDialogs : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        ASSERT_EQ(LibMain(GetModuleHandleA(nullptr), 1, nullptr), 1);
        host_ = CreateWindowExA(0, "STATIC", "host", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_TRUE(host_);
        DrainMessages();
    }
    void TearDown() override
    {
        CloseOrvelMeter();
        DestroyWindow(host_);
        DrainMessages();
        StartedLibrary::TearDown();
    }
    HWND host_ = nullptr;
};
