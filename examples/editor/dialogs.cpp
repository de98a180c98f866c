// The library's dialogs that need only what is selected: options, user dictionary, a line of Lao,
// and the font picker for the view's font.
#include <algorithm>
#include <cstring>

#include "commands.h"
#include "document.h"
#include "encoding.h"
#include "library.h"
#include "view_font.h"

constexpr int kLineSize = 1024;  // bytes of a line to be edited, terminator included
constexpr int kNameSize = 37;    // bytes of a font's name
constexpr int kUnicodeCode = 1;  // font code of fonts with Unicode characters
constexpr int kAlways = -1;

void ShowOptions()
{
    gOrvel.OrvelOptions(gDocument.frame);
}

void ShowDictionary()
{
    Range selection = ReadSelection();
    std::wstring word = ReadText().substr(selection.start, selection.end - selection.start);
    gOrvel.ModifyDictionary(gDocument.frame, ToInternal(WithoutMarks(word)).c_str());
}

// The line of the caret. One that the box can't hold is left alone, since it would come back cut.
void EditLine()
{
    std::wstring text = ReadText();
    Range line = ReadSelection();
    while (line.start > 0 && text[line.start - 1] != L'\n')
        --line.start;
    line.end = std::min(text.find(L"\r\n", line.start), text.size());
    std::wstring old = text.substr(line.start, line.end - line.start);
    std::string code = ToInternal(old);
    bool isWhole =
        std::count(code.begin(), code.end(), '?') == std::count(old.begin(), old.end(), L'?');
    if (code.size() >= kLineSize || !isWhole) {
        Tell(L"The line is too long, or has signs that the box can't show.");
        return;
    }
    char buffer[kLineSize];
    memcpy(buffer, code.c_str(), code.size() + 1);
    if (gOrvel.EditLao(gDocument.frame, buffer, sizeof buffer) && buffer != code)
        ReplaceRange(line, FromInternal(buffer));
}

// "Always" makes the choice the substitute of the font that was there before.
void ChooseViewFont()
{
    std::string font = ReadViewFont();
    char choice[kNameSize] = "";
    int answer = gOrvel.ChooseLaoFont(font.c_str(), choice, sizeof choice, kUnicodeCode);
    if (!choice[0])
        return;
    SetViewFont(choice);
    if (answer == kAlways && gOrvel.SetReplacementFontName(font.c_str(), choice))
        gOrvel.WriteFontList();
}
