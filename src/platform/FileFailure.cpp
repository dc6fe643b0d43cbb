#include "platform/FileFailure.h"

#include <cerrno>
#include <system_error>

namespace boreforge {

FileFailure lastFileFailure;

bool Fail(FileProblem problem) {
    lastFileFailure = {problem, 0};
    return false;
}

bool FailBySystem() {
    lastFileFailure = {FileProblem::System, errno};
    return false;
}

bool FailByMemory() {
    lastFileFailure = {FileProblem::System, ENOMEM};
    return false;
}

bool FailAsDamaged(const std::string& place) {
    lastFileFailure = {FileProblem::Damaged, 0, place};
    return false;
}

std::string FailureText() {
    switch (lastFileFailure.problem) {
        case FileProblem::None:
            return "The reason is not known.";
        case FileProblem::Missing:
            return "There is no such file.";
        case FileProblem::WrongName:
            return "Its name is not that of a file of this kind.";
        case FileProblem::Damaged:
            return lastFileFailure.place;
        case FileProblem::System:
            if (lastFileFailure.code == EBUSY) return "Another program is using it.";
            return std::generic_category().message(lastFileFailure.code) + ".";
        case FileProblem::NotRegular:
            return "It is not a regular file.";
        case FileProblem::TooLarge:
            return "It would be too large.";
        case FileProblem::WrongBeginning:
            return "It is not a file of this kind.";
        case FileProblem::KeepsChanging:
            return "It was being changed while it was read.";
        case FileProblem::IsTrack:
            return "It is a track.";
        case FileProblem::IsShape:
            return "It is a tunnel shape.";
        case FileProblem::RightsLost:
            return "Its owner and permissions can't be kept.";
        case FileProblem::Changed:
            return "It was changed by another program.";
        case FileProblem::InUse:
            return "Another program is saving it right now.";
    }
    return {};
}

std::string FailureMessage(const std::string& headline, const std::string& path,
                           const std::string& consequence) {
    const FileProblem problem = lastFileFailure.problem;
    if (problem == FileProblem::IsTrack || problem == FileProblem::IsShape) {
        const std::string kind = problem == FileProblem::IsTrack ? "Track" : "Shape";
        return "Error - That File Is a " + kind + "!\n\n" + path + "\n\nIt was not replaced. " + consequence;
    }
    return headline + "\n\n" + path + "\n" + FailureText() + "\n\n" + consequence;
}

}  // namespace boreforge
