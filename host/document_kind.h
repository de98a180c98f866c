// What a file is, by its first bytes. `orvel convert` asks before each conversion, and whoever
// gives it something that it doesn't convert is told what that is and what to do. Which document it
// is else, and whether it is one, is the library's to tell.
#pragma once

#include <string>
#include <string_view>

// What speaks against converting a file.
struct KindRefusal {
    std::string why;  // words that follow its name; empty: nothing does
    bool isOther;     // it is no document: a folder of documents may well hold it
};

// Of a file that begins so. Plain text is taken where its font is known.
KindRefusal LookAtHead(std::string_view head, bool hasTextFont);

// The same of the file itself, also when it can't be read. A document is read more than once: what
// isn't a plain file, a pipe for instance, is none.
KindRefusal LookAtDocument(const std::string &path, bool hasTextFont);
