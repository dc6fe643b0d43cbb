// Makes one of the calls that reach the disk fail.
#pragma once

namespace boreforge {

// From now on the calls work as usual, except that the one after the next `which` calls fails. Reads and
// writes do only half of what they are asked for.
void FailOneCall(int which);

// True when the call that was to fail has been made.
bool CallHasFailed();

}  // namespace boreforge
