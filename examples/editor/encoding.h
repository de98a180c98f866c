// Between the 16-bit characters of the edit control, the internal code of the library's dialogs and
// the bytes of files.
#pragma once

#include <string>
#include <string_view>

// The internal code of a text. What has no place in it becomes "?".
std::string ToInternal(std::wstring_view text);
std::wstring FromInternal(const std::string &code);

// A file's text in a font code or, for kUtf8, in UTF-8. False when a character has no place there;
// bytes then holds what can be had.
bool EncodeText(std::wstring_view text, int code, std::string *bytes);

// The other way. False when the bytes are no text in this code.
bool DecodeText(const std::string &bytes, int code, std::wstring *text);
