// Describes the main window to screen readers.
#pragma once

namespace boreforge {

// Installs the roles and values of the main window, its canvas and its read-outs. Call it before they are
// made.
void InstallWindowAccess();

}  // namespace boreforge
