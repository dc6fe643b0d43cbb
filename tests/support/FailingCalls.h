// Makes one of the calls that reach the disk fail.
#pragma once

namespace boreforge {

// Makes call number `which`, from 0 on, fail; all others work. Reads and writes do only half of what they are
// asked for.
void FailOneCall(int which);

// True when the call that was to fail has been made.
bool CallHasFailed();

}  // namespace boreforge
