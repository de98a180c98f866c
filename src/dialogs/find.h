// What the find dialog decides without its window. Its exports are declared in orvel.h.
#pragma once

// True when there is nothing to find: no character but white space.
bool IsBlankText(const char *text);
