// What others than hosts may ask of text wrapping; its operations stand in orvel.h.
#pragma once

// A side buffer that a host has armed goes with the next conversion, which has no use for it.
void DropSideBuffer();
