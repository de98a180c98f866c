// The words of the peer's dictionary, so that both can divide text by the same ones.
#pragma once

#include <string>

// A word a line, in UTF-8. Ends the program where this ICU has no such dictionary.
std::string ReadIcuWords();
