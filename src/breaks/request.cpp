// The flags of a call. The option "b" fills in where the flags don't say by what to break.
#include "breaks/request.h"

#include "frame/records.h"

// Old spellings alone don't carry a break by words.
BreakRequest ReadBreakRequest(DWORD flags)
{
    const OptionsRecord *options = gProcess.options;
    DWORD mode = flags & kBothBreaks ? flags & kBothBreaks : options->breakMode;
    bool hasWords = options->dictionaries & (kMainDictionary | kUserDictionary);
    bool insert = (flags & kInsertBreaks) && (mode != kWordBreaks || hasWords);
    return {insert, flags | mode};
}
