// The text of the edit control, and its break marks: shown, each is a sign of its own, which is one
// character as the mark is, so that no place in the text moves.
#include "document.h"

#include <algorithm>

#include "commands.h"

Document gDocument;

std::wstring ReadText()
{
    std::wstring text(size_t(GetWindowTextLengthW(gDocument.text)) + 1, 0);
    text.resize(size_t(GetWindowTextW(gDocument.text, text.data(), int(text.size()))));
    if (gDocument.showsMarks)
        std::replace(text.begin(), text.end(), kShownBreak, kBreak);
    return text;
}

Range ReadSelection()
{
    DWORD start = 0, end = 0;
    SendMessageW(gDocument.text, EM_GETSEL, WPARAM(&start), LPARAM(&end));
    return {start, end};
}

void SelectRange(Range range)
{
    SendMessageW(gDocument.text, EM_SETSEL, range.start, LPARAM(range.end));
    SendMessageW(gDocument.text, EM_SCROLLCARET, 0, 0);
}

void ReplaceRange(Range range, std::wstring_view text)
{
    std::wstring shown(text);
    if (gDocument.showsMarks)
        std::replace(shown.begin(), shown.end(), kBreak, kShownBreak);
    SelectRange(range);
    SendMessageW(gDocument.text, EM_REPLACESEL, TRUE, LPARAM(shown.c_str()));
}

std::wstring WithoutMarks(std::wstring text)
{
    std::erase(text, kBreak);
    return text;
}

void Tell(const wchar_t *text)
{
    MessageBoxW(GetActiveWindow(), text, L"Editor", MB_OK | MB_ICONINFORMATION);
}

// Without a question: the document stays as it is, and so do its marks.
void ToggleMarks()
{
    std::wstring text = ReadText();
    if (!gDocument.showsMarks && text.find(kShownBreak) != text.npos) {
        Tell(L"The text has the sign \u00A6 of its own, which shows the breaks here.");
        return;
    }
    Range selection = ReadSelection();
    bool isModified = SendMessageW(gDocument.text, EM_GETMODIFY, 0, 0);
    gDocument.showsMarks = !gDocument.showsMarks;
    ReplaceRange({0, text.size()}, text);
    SelectRange(selection);
    SendMessageW(gDocument.text, EM_SETMODIFY, isModified, 0);
    CheckMenuItem(GetMenu(gDocument.frame), kShowMarks,
                  gDocument.showsMarks ? MF_CHECKED : MF_UNCHECKED);
}
