// Message boxes, and who answers them: an answerer where a host or a test has set one, else
// standard error and the default button, since nobody sits at this screen.
#include <assert.h>
#include <iterator>
#include <stddef.h>
#include <string.h>

#include "runtime.h"

constexpr int kMaxBoxText = 4096;  // bytes of a text or caption as told, terminator included

// Per thread, as the hook that does this on Windows is.
static thread_local MessageBoxAnswerer gAnswerer;

struct BoxButtons {
    int count;   // of the buttons
    int ids[3];  // in their order; the first is the default
};

// clang-format off
static constexpr BoxButtons kBoxButtons[] = {
    {1, {IDOK}},                            // MB_OK
    {2, {IDOK, IDCANCEL}},                  // MB_OKCANCEL
    {3, {IDABORT, IDRETRY, IDIGNORE}},      // MB_ABORTRETRYIGNORE
    {3, {IDYES, IDNO, IDCANCEL}},           // MB_YESNOCANCEL
    {2, {IDYES, IDNO}},                     // MB_YESNO
    {2, {IDRETRY, IDCANCEL}},               // MB_RETRYCANCEL
    {3, {IDCANCEL, IDTRYAGAIN, IDCONTINUE}},// MB_CANCELTRYCONTINUE
};
// clang-format on
constexpr UINT kBoxTypeCount = std::size(kBoxButtons);

MessageBoxAnswerer SetMessageBoxAnswerer(MessageBoxAnswerer answerer)
{
    MessageBoxAnswerer before = gAnswerer;
    gAnswerer = answerer;
    return before;
}

// A default button that the box doesn't have means the first one.
static int DefaultButton(UINT flags)
{
    assert((flags & MB_TYPEMASK) < kBoxTypeCount);
    const BoxButtons &buttons = kBoxButtons[flags & MB_TYPEMASK];
    int number = int((flags & MB_DEFMASK) >> 8);
    return buttons.ids[number < buttons.count ? number : 0];
}

// A copy of what fits into a box's text, terminated.
static void CopyCut(char *to, const char *from)
{
    size_t length = strnlen(from, kMaxBoxText - 1);
    memcpy(to, from, length);
    to[length] = '\0';
}

// The copies are on the stack, since an answerer may show a box itself.
static int AskAnswerer(HWND owner, const char *text, const char *caption, UINT flags)
{
    char cutText[kMaxBoxText];
    char cutCaption[kMaxBoxText];
    CopyCut(cutText, text);
    CopyCut(cutCaption, caption);
    return gAnswerer(owner, cutText, cutCaption, flags & kBoxFlagsTold);
}

// 0 for what can't be shown: an owner that is gone, a kind of box that there isn't.
int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT flags)
{
    if (owner && !IsWindow(owner)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    if ((flags & MB_TYPEMASK) >= kBoxTypeCount) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (!text)
        text = "";
    if (!caption)
        caption = "Error";
    if (gAnswerer)
        return AskAnswerer(owner, text, caption, flags);
    fprintf(stderr, "%s: %s\n", caption, text);
    return DefaultButton(flags);
}
