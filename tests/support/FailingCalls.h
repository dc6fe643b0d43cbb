// Makes one of the calls that reach the disk fail, or the last one of the program.
#pragma once

namespace boreforge {

// Makes call number `which`, from 0 on, fail; all others work. Reads and writes do only half of what they are
// asked for.
void FailOneCall(int which);

// True when the call that was to fail has been made.
bool CallHasFailed();

// Raises a signal as soon as call number `which`, from 0 on, has done its work.
void RaiseAfterCall(int which, int signal);

}  // namespace boreforge
