// What the options dialog decides without its window.
#pragma once

#include "frame/records.h"

// The radio button that stands for a value in its group of choices, named by the field; a value
// that none has is shown as the group's standard.
int ButtonOfOption(WORD OptionsRecord::*field, WORD value);

// Groups of controls that can be used together.
enum OptionControls {
    kNoControls = 0,
    kWordControls = 1,         // the dictionaries: breaks between words are on
    kOldWordControls = 2,      // the old spellings: they need the main dictionary
    kOldSpellingControls = 4,  // what becomes of old spellings: needs their dictionary
    kUserWordControls = 8,     // the list of the user's words: needs their dictionary
};

// The groups that the record leaves usable.
int UsableControls(const OptionsRecord *options);
