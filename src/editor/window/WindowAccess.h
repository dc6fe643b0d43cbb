// Describes the main window to screen readers.
#pragma once

namespace boreforge {

// Installs the roles of the main window and its canvas. Call it before they are made.
void InstallWindowAccess();

}  // namespace boreforge
