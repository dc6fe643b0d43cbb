#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "base/Values.h"
#include "platform/Paths.h"

namespace boreforge {

SplitPath Split(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

std::string RealPath(const std::string& path) {
    std::error_code failure;
    const std::filesystem::path real = std::filesystem::canonical(path, failure);
    errno = failure.value();
    return failure ? std::string() : real.string();
}

FileIdentity IdentityOf(const std::string& path) {
    struct stat found;
    if (::stat(path.c_str(), &found) == 0) return {found.st_dev, found.st_ino, ""};
    const SplitPath split = Split(path);
    if (::stat(split.folder.c_str(), &found) != 0) return {0, 0, ToLowerAscii(path)};
    return {found.st_dev, found.st_ino, ToLowerAscii(split.name)};
}

}  // namespace boreforge
