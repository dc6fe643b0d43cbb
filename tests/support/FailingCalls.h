// The calls that reach the disk, one of which fails.
#pragma once

namespace boreforge {

// Makes `fileCalls` the system's calls, of which the one after `which` others fails. Reads and writes do half
// of what they are asked for, and every other one is interrupted first.
void FailOneCall(int which);

// True when as many calls were made since FailOneCall that the one to fail was among them.
bool CallHasFailed();

}  // namespace boreforge
