// The Lao keyboard of a modeless dialog.
#include "dialogs/lao_input.h"

#include "orvel.h"

struct LaoInputState {
    LaoInput *typing;  // of the dialog that has changed the mode word; null: the word is the host's
};
static LaoInputState gLaoInput;

void BeginLaoInput(LaoInput *input)
{
    DWORD before = LaoMode(kLaoTyping, kDialogMode);
    input->savedMode = gLaoInput.typing ? gLaoInput.typing->savedMode : before;
    gLaoInput.typing = input;
}

void TurnLaoInputOn(LaoInput *input, DWORD value, DWORD mask)
{
    LaoMode(value, mask);
    gLaoInput.typing = input;
}

void TurnLaoInputOff(LaoInput *input)
{
    LaoMode(input->savedMode, kDialogMode);
    gLaoInput.typing = nullptr;
}

void EndLaoInput(LaoInput *input)
{
    if (gLaoInput.typing == input)
        TurnLaoInputOff(input);
}
