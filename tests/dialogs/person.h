// A person before a modal dialog: does the next step whenever the dialog that is open has nothing
// left to do. A step may open another dialog; the steps go on in there.
#pragma once

#include <deque>
#include <functional>
#include <map>

#include "dialogs/attached.h"
#include "frame/controls.h"

typedef std::function<void(HWND dialog)> Step;

struct PersonState {
    std::deque<Step> steps;
    std::map<HWND, WNDPROC> watched;  // windows that own dialogs, with their own procedures
};
inline PersonState gPerson;

inline void WatchDialogsOf(HWND owner);

inline LRESULT CALLBACK WatchIdle(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WNDPROC before = gPerson.watched[window];
    if (message == WM_DESTROY) {
        SetProcedure(window, before);
        gPerson.watched.erase(window);
    }
    if (message != WM_ENTERIDLE)
        return CallWindowProcA(before, window, message, wParam, lParam);
    HWND dialog = reinterpret_cast<HWND>(lParam);
    WatchDialogsOf(dialog);
    if (gPerson.steps.empty()) {
        ADD_FAILURE() << "a dialog is left open";
        EndDialog(dialog, 0);
        return 0;
    }
    Step step = gPerson.steps.front();
    gPerson.steps.pop_front();
    step(dialog);
    // So that this is told again, or the loop sees that the dialog is gone.
    PostMessageA(IsWindow(dialog) ? dialog : nullptr, WM_NULL, 0, 0);
    return 0;
}

inline void WatchDialogsOf(HWND owner)
{
    if (gPerson.watched.contains(owner))
        return;
    gPerson.watched[owner] = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(owner, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WatchIdle)));
}

// ---- steps ----

constexpr int kEditOfCombo = 1001;  // the system's number of the box inside of a combo box

inline Step Click(int id)
{
    return [=](HWND dialog) { SendDlgItemMessageA(dialog, id, BM_CLICK, 0, 0); };
}
inline Step Close()
{
    return [](HWND dialog) { SendMessageA(dialog, WM_CLOSE, 0, 0); };
}
// A key of the modal loop's.
inline Step Key(BYTE key)
{
    return [=](HWND) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    };
}
inline Step Type(int id, const std::string &text)
{
    return [=](HWND dialog) {
        HWND box = GetDlgItem(dialog, id), inside = GetDlgItem(box, kEditOfCombo);
        SetFocus(inside ? inside : box);
        SendMessageA(GetFocus(), EM_SETSEL, 0, -1);
        for (unsigned char c : text)
            SendMessageA(GetFocus(), WM_CHAR, c, 1);
    };
}
// Chooses from a list as a click does.
inline Step Choose(int id, int position)
{
    return [=](HWND dialog) {
        SelectItem(dialog, id, position);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
    };
}

inline std::string TextOf(HWND dialog, int id)
{
    char text[600];
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}
// What the step after the others sees.
inline Step See(std::string *seen, const std::function<std::string(HWND)> &look)
{
    return [=](HWND dialog) { *seen += look(dialog); };
}
inline int DefaultOf(HWND dialog)
{
    return LOWORD(SendMessageA(dialog, DM_GETDEFID, 0, 0));
}

// The ids of a range that can be used, checked or seen, each with a blank behind it.
inline std::string IdsWith(HWND dialog, const std::vector<int> &ids, bool (*has)(HWND, int))
{
    std::string found;
    for (int id : ids)
        if (has(dialog, id))
            found += std::to_string(id) + " ";
    return found;
}
inline bool IsUsable(HWND dialog, int id)
{
    return IsWindowEnabled(GetDlgItem(dialog, id));
}
inline bool IsSeen(HWND dialog, int id)
{
    return IsWindowVisible(GetDlgItem(dialog, id));
}

class ModalDialogs : public AttachedDialogs
{
  protected:
    void SetUp() override
    {
        AttachedDialogs::SetUp();
        WatchDialogsOf(host_);
        SetActiveWindow(host_);
        mode_ = LaoMode(0, 0);
    }
    void TearDown() override
    {
        EXPECT_TRUE(gPerson.steps.empty()) << "the dialog closed before the last step";
        gPerson.steps.clear();
        AttachedDialogs::TearDown();
        EXPECT_EQ(LaoMode(0, 0), mode_) << "the host's mode word";
    }
    static void Do(std::deque<Step> steps) { gPerson.steps = std::move(steps); }
    DWORD mode_ = 0;
};
