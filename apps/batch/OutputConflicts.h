// Outputs that would replace an input or one another.
#pragma once

#include <string>

#include "batch/BatchOptions.h"

namespace boreforge {

// Compares every output of all jobs with every input and with every other output, also through links and
// other spellings. Returns the first conflict as a sentence, or an empty text. A track that is rewritten
// itself is no output here.
std::string ConflictOf(const BatchOptions& options);

}  // namespace boreforge
