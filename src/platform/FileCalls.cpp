#include "platform/FileCalls.h"

namespace boreforge {

FileCalls fileCalls = SystemFileCalls();

}  // namespace boreforge
