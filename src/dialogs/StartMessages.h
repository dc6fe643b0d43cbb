// Qt's messages while it opens the display.
#pragma once

namespace boreforge {

// Installs a handler for the time in which the QApplication is made; qInstallMessageHandler(nullptr) ends it.
// Without a display Qt reports each attempt and aborts. The handler prints one line instead, "PROGRAM: error:
// needs a display; ADVICE (REASON)" with Qt's first reason, and ends the program with status 1. Both texts
// must stay valid.
void ExplainMissingDisplay(const char* program, const char* advice);

}  // namespace boreforge
