#include "dialogs/StartMessages.h"

#include <QString>

#include <cstdio>
#include <cstdlib>

namespace boreforge {

namespace {

const char* programName = "";
const char* adviceText = "";
QString displayFailure;  // why Qt couldn't open a display, in its own words

void OnStartMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s: error: needs a display; %s (%s)\n", programName, adviceText,
                     qUtf8Printable((displayFailure.isEmpty() ? text : displayFailure).trimmed()));
        std::_Exit(1);
    }
    if (!QLatin1String(context.category).startsWith(QLatin1String("qt.qpa.")))
        std::fprintf(stderr, "%s\n", qUtf8Printable(qFormatLogMessage(type, context, text)));
    else if (displayFailure.isEmpty() || !text.startsWith("Could not load"))  // which only repeats the reason
        displayFailure = text;
}

}  // namespace

void ExplainMissingDisplay(const char* program, const char* advice) {
    programName = program;
    adviceText = advice;
    qInstallMessageHandler(OnStartMessage);
}

}  // namespace boreforge
