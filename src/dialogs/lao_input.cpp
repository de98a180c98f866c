// The Lao keyboard of a modeless dialog.
#include "dialogs/lao_input.h"

#include "orvel.h"

void BeginLaoInput(LaoInput *input)
{
    *input = {LaoMode(kLaoTyping, kDialogMode), true};
}

void TurnLaoInputOn(LaoInput *input, DWORD value, DWORD mask)
{
    LaoMode(value, mask);
    input->isOn = true;
}

void TurnLaoInputOff(LaoInput *input)
{
    LaoMode(input->savedMode, kDialogMode);
    input->isOn = false;
}
