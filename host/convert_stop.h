// How orvel convert is stopped: a new document stands beside the old one until it is whole, and has
// to go before the command does.
#pragma once

// The first signal to end stops the work at the next block, a second one ends the program as ever.
// What was told to ignore them, as behind nohup, goes on so.
void CatchSignals();

// Stops the work as a signal does.
void RequestStop();

bool IsStopRequested();

// Ends as the signal would have ended the program, so that a shell sees what happened. Returns when
// none came.
void EndBySignal();
