#include "batch/OutputConflicts.h"

#include <map>

#include "base/Text.h"
#include "platform/Paths.h"

namespace boreforge {

std::string ConflictOf(const BatchOptions& options) {
    std::map<FileIdentity, std::string> inputs, outputs;
    if (!options.shape.empty()) inputs.emplace(IdentityOf(options.shape), options.shape);
    for (const BatchJob& job : options.jobs)
        inputs.emplace(IdentityOf(job.track), job.track);
    for (const BatchJob& job : options.jobs)
        for (const std::string& output : {job.object, job.trackOut}) {
            if (output.empty()) continue;
            const FileIdentity file = IdentityOf(output);
            if (const auto input = inputs.find(file); input != inputs.end())
                return "'" + OneLine(output) + "' would replace '" + OneLine(input->second) + "'";
            if (const auto [other, isNew] = outputs.emplace(file, output); !isNew)
                return "'" + OneLine(other->second) + "' and '" + OneLine(output) + "' are the same file";
        }
    return {};
}

}  // namespace boreforge
