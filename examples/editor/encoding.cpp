// The library converts texts beside each other, place for place: what it has no sign for stays what
// the other text holds there, so that each text is filled with that first.
#include "encoding.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "document.h"
#include "library.h"

constexpr int kNoFont = -1;         // the plain characters, whatever font shows them
constexpr size_t kRecodedSize = 3;  // bytes that one byte can become in another code

std::string ToInternal(std::wstring_view text)
{
    std::string code(text.size(), '?');
    int length = gOrvel.UnicodeToLao(text.data(), code.data(), DWORD(code.size() + 1), kNoFont);
    code.resize(size_t(std::max(length, 0)));
    return code;
}

std::wstring FromInternal(const std::string &code)
{
    std::vector<wchar_t> text(2 * code.size() + 1);  // a byte can be two signs
    for (size_t i = 0; i < code.size(); ++i) {
        BYTE byte = BYTE(code[i]);
        text[i] = byte < 0x80 ? byte : byte == kRealHyphen ? L'-' : L'?';
    }
    int length = gOrvel.LaoToUnicode(code.c_str(), text.data(), DWORD(text.size()), kNoFont);
    return std::wstring(text.data(), size_t(std::max(length, 0)));
}

static std::string Recode(const std::string &text, int code)
{
    std::vector<char> buffer(kRecodedSize * text.size() + 1);
    memcpy(buffer.data(), text.c_str(), text.size() + 1);
    gOrvel.RecodeString(buffer.data(), DWORD(buffer.size()), code);
    return buffer.data();
}

static std::string ToUtf8(std::wstring_view text)
{
    int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), int(text.size()), nullptr, 0, nullptr,
                                   nullptr);
    std::string bytes(size_t(size), 0);
    WideCharToMultiByte(CP_UTF8, 0, text.data(), int(text.size()), bytes.data(), size, nullptr,
                        nullptr);
    return bytes;
}

static bool FromUtf8(const std::string &bytes, std::wstring *text)
{
    DWORD strict = MB_ERR_INVALID_CHARS;
    int length = MultiByteToWideChar(CP_UTF8, strict, bytes.data(), int(bytes.size()), nullptr, 0);
    text->resize(size_t(length));
    return bytes.empty() || MultiByteToWideChar(CP_UTF8, strict, bytes.data(), int(bytes.size()),
                                                text->data(), length);
}

bool DecodeText(const std::string &bytes, int code, std::wstring *text)
{
    if (bytes.find('\0') != bytes.npos)
        return false;
    if (code == kUtf8)
        return FromUtf8(bytes, text);
    std::string internal = Recode(bytes, code);
    gOrvel.PackLao(internal.data());
    *text = FromInternal(internal.c_str());
    return true;
}

// A text in a font's code has its signs in the library's order and without what has no place, so
// the way back tells whether anything is lost.
bool EncodeText(std::wstring_view text, int code, std::string *bytes)
{
    if (code == kUtf8) {
        *bytes = ToUtf8(text);
        return true;
    }
    std::string internal = ToInternal(text);
    std::wstring back;
    *bytes = Recode(internal, -code);
    return DecodeText(*bytes, code, &back) && ToInternal(back) == internal &&
           std::count(internal.begin(), internal.end(), '?') ==
               std::count(text.begin(), text.end(), L'?');
}
