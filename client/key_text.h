// UTF-8 text through the operations that give another text: sort keys, romanization, e-mail coding.
// Only Lao and ASCII are handed over, in pieces that end where anything else stands, so that no
// character of another script can be taken for a byte of the result.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <windows.h>

#include "codes.h"

// What a result is, which decides what of a text is handed over and how the result is written.
enum class KeyForm {
    kKey,  // a sort key: bytes, as the operation gives them; all that has a code is handed over
    kShownKey,  // the same as UTF-8
    kText,      // romanized or coded text
    kDecoded    // Lao again; a hyphen behind a coded syllable is a break, all others are text
};

// An operation of the library over internal code, NUL-terminated: as SortString without its font.
typedef std::function<int(const char *text, char *output, DWORD size)> KeyOperation;

// Runs the operation over a text and appends what comes of it. inBrackets: whether a text to be
// decoded begins inside of a Latin passage. False when the operation could not do a piece, and
// shows why in a message; the output then holds what came before it.
bool ConvertKeyText(const CodeTable &codes, KeyForm form, const KeyOperation &operation,
                    std::string_view source, bool inBrackets, std::string *output);
