// The font in which the edit control shows the text.
#pragma once

#include <string>

// The face's name, in the system's code page.
std::string ReadViewFont();
void SetViewFont(const char *face);

// The first font of this machine that has Lao.
const char *FindLaoFont();
