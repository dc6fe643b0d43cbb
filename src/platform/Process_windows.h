// What a program on Windows has to put back when it ends early.
#pragma once

namespace boreforge {

// Gives the console the code page that it had before ProcessSetup changed it. More than once does no harm.
void RestoreConsole();

}  // namespace boreforge
