// Fonts that a program brings along.
#pragma once

// Makes the fonts of the folder "fonts" beside this program known to it alone, until it ends. The
// library's dialogs ask for "Saysettha Lao", which few have; a folder that isn't there is none.
void AddOwnFonts();
