// The document: the text of the edit control, and the file that it came from. Places count 16-bit
// characters; both ends of a line count, as the control has them.
#pragma once

#include <string>
#include <string_view>
#include <windows.h>

constexpr wchar_t kBreak = 0x200B;       // U+200B, where a line of Lao may end
constexpr wchar_t kShownBreak = 0x00A6;  // what the control shows for it when marks are shown
constexpr int kUtf8 = -1;                // beside the font codes

struct Document {
    HWND frame, text;   // the program's window and its edit control
    std::wstring path;  // of the file, empty for a new document
    int code;           // of the file: a font code or kUtf8
    bool hasByteOrderMark;
    bool hasPlainLineFeeds;  // its lines end with LF alone
    bool showsMarks;
};
extern Document gDocument;

struct Range {
    size_t start, end;
};

// The whole text, with kBreak for its marks whether they are shown or not.
std::wstring ReadText();

// The selection, or where the caret is.
Range ReadSelection();
void SelectRange(Range range);

// Puts a text, with kBreak for marks, in the place of a range. The user can undo it.
void ReplaceRange(Range range, std::wstring_view text);

// A text without its marks.
std::wstring WithoutMarks(std::wstring text);

// Shows a text in a box with one button.
void Tell(const wchar_t *text);

// Opens a file in the code that the user chose, or says why not; false then.
bool LoadFile(const std::wstring &path, int code);

// Asks whether changes are to be saved. False when the user wants to go on with the document.
bool CanDiscard();
