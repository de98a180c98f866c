// What a document is, told by its first bytes.
#pragma once

#include <string_view>

#include "orvel.h"

enum { kHeadSize = 64 * 1024 };  // bytes of a document that are looked at, or all of a shorter one

// The format of a document that begins so; of a package only that it is one, kDocx. kNoFormat for
// what has none that is known, which may be plain text.
DocumentFormat FormatOfHead(std::string_view head);
