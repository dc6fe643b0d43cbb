// What screen readers are told about the main window.
#pragma once

namespace boreforge {

// Makes the roles and values of the main window, its canvas and its read-outs known. Call it before them.
void InstallWindowAccess();

}  // namespace boreforge
