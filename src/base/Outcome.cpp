#include "base/Outcome.h"

#include <cerrno>
#include <system_error>

#include "base/Text.h"

namespace boreforge {

namespace {

void SetIfEmpty(std::string& text, const std::string& context) {
    if (text.empty()) text = context;
}

void Append(std::string& text, const std::string& separator, const std::string& more) {
    if (more.empty()) return;
    if (!text.empty()) text += separator;
    text += more;
}

}  // namespace

std::string Failure::Text() const {
    std::string body = ToOneLine(path), end = consequence, text = headline;
    Append(body, "\n", reason);
    Append(end, " ", advice);
    Append(text, "\n\n", body);
    Append(text, "\n\n", end);
    return text;
}

Outcome Outcome::With(const Failure& context) const {
    if (!failure_) return *this;
    Failure failure = *failure_;
    SetIfEmpty(failure.headline, context.headline);
    SetIfEmpty(failure.path, context.path);
    SetIfEmpty(failure.reason, context.reason);
    SetIfEmpty(failure.consequence, context.consequence);
    SetIfEmpty(failure.advice, context.advice);
    return failure;
}

Failure SystemFailure(int error) {
    Failure failure;
    // ETXTBSY: on Windows it stands for any file that is in use; the system's text is "Text file busy".
    failure.reason =
        error == ETXTBSY ? "Another program is using it." : std::generic_category().message(error) + ".";
    if (error == EACCES || error == EPERM || error == EROFS) failure.problem = Problem::NoAccess;
    return failure;
}

}  // namespace boreforge
