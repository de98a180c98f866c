// Fonts in style sheets of pages: as much of them as pages with fonts of their own use.
#pragma once

#include "documents/document.h"

// One name of a font in a text of declarations.
struct FamilyPlace {
    size_t start, length;  // of the name, without quotes
};

// The first family that declarations ("font-family: 'A', B; color: red") name: false where they
// name none. What follows a family in the same list doesn't count: it was for where the first isn't
// there.
bool FindFamily(std::string_view declarations, FamilyPlace *place);

// Writes blanks over the comments of a style sheet, so that nothing in them counts.
void BlankComments(char *sheet, size_t length);

// The next rule of a style sheet from *at on: its selectors, and its declarations, both as
// stretches of the sheet. False behind the last. Rules of embedded fonts are passed over.
struct CssRule {
    std::string_view selectors, declarations;
};
bool NextRule(std::string_view sheet, size_t *at, CssRule *rule);

// The next selector of a list; of one that says what stands around its element only the element
// counts. Empty selectors are passed over.
bool NextSelector(std::string_view *selectors, std::string_view *selector);
