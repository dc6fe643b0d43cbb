#include "platform/FileCalls.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <system_error>

#include "platform/System_windows.h"

namespace boreforge {

namespace {

// Others may read, change, rename and delete what we have open, as on other systems; the handler of Ctrl+C
// deletes the temporary file.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kMaxTransfer = std::size_t{1} << 30;  // the C library counts in 31 bits
constexpr std::size_t kMaxPath = std::size_t{1} << 15;      // characters
constexpr DWORD kMaxWait = 1000, kRetryInterval = 20;       // milliseconds
constexpr std::int64_t kTick = 100;                         // nanoseconds
constexpr std::int64_t kTicksFrom1601To1970 = 116'444'736'000'000'000;

int ErrorNumber(DWORD error) {
    switch (error) {
        case ERROR_SHARING_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
        case ERROR_UNABLE_TO_REMOVE_REPLACED:
        case ERROR_UNABLE_TO_MOVE_REPLACEMENT:
            return ETXTBSY;
        case ERROR_LOCK_VIOLATION:
        case ERROR_IO_PENDING:
            return EWOULDBLOCK;
        case ERROR_INVALID_NAME:
            return EINVAL;  // the C++ library would make it ENOENT
        default:
            break;
    }
    const auto found = std::system_category().default_error_condition(static_cast<int>(error));
    return found.category() == std::generic_category() ? found.value() : EIO;
}

int FailWith(DWORD error) {
    errno = ErrorNumber(error);
    return -1;
}

int ZeroOrErrno(BOOL good) { return good ? 0 : FailWith(::GetLastError()); }

// Repeats a call for up to a second while another program holds the file: virus scanners and indexers open
// what has just been written.
template <class Call>
int RetryWhileInUse(const Call& call, bool retriesDenied = false) {
    for (DWORD waited = 0;; waited += kRetryInterval) {
        const int result = call();
        const bool held = result < 0 && (errno == ETXTBSY || (retriesDenied && errno == EACCES));
        if (!held || waited >= kMaxWait) return result;
        ::Sleep(kRetryInterval);
    }
}

HANDLE HandleOf(int file) { return reinterpret_cast<HANDLE>(::_get_osfhandle(file)); }

// A folder can be opened too.
int OpenPath(const std::wstring& path, DWORD access, DWORD creation, DWORD flags = 0) {
    const HANDLE handle = ::CreateFileW(path.c_str(), access, kShareAll, nullptr, creation,
                                        FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return FailWith(::GetLastError());
    const int file = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
    if (file < 0) (void)::CloseHandle(handle);
    return file;
}

// The path that each open file was opened with.
std::map<int, std::wstring>& OpenPaths() {
    static std::map<int, std::wstring> paths;
    return paths;
}

int Open(const char* path, OpenFor purpose) {
    const DWORD access = purpose == OpenFor::Reading             ? GENERIC_READ
                         : purpose == OpenFor::ReadingAndWriting ? GENERIC_READ | GENERIC_WRITE
                                                                 : FILE_READ_ATTRIBUTES;
    const std::wstring systemPath = ToSystemPath(path);
    const int file = RetryWhileInUse([&] { return OpenPath(systemPath, access, OPEN_EXISTING); });
    if (file >= 0) OpenPaths()[file] = systemPath;
    return file;
}

bool IsLink(HANDLE handle) {
    FILE_ATTRIBUTE_TAG_INFO info;
    return ::GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &info, sizeof info) &&
           (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) && IsReparseTagNameSurrogate(info.ReparseTag);
}

int Inspect(int file, FileInfo* info) {
    *info = {};
    const HANDLE handle = HandleOf(file);
    if (::GetFileType(handle) != FILE_TYPE_DISK) return 0;
    BY_HANDLE_FILE_INFORMATION found;
    if (!::GetFileInformationByHandle(handle, &found)) return FailWith(::GetLastError());
    const auto join = [](DWORD high, DWORD low) { return std::int64_t{high} << 32 | low; };
    const std::int64_t ticks =
        join(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime);
    info->device = found.dwVolumeSerialNumber;
    info->number = static_cast<std::uint64_t>(join(found.nFileIndexHigh, found.nFileIndexLow));
    info->size = join(found.nFileSizeHigh, found.nFileSizeLow);
    info->modified = (ticks - kTicksFrom1601To1970) * kTick;
    info->changed = info->modified;  // indexers and virus scanners change the other time
    info->mode = 0666;
    info->isLink = IsLink(handle);
    info->isRegular = !info->isLink && !(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    return 0;
}

int InspectIn(int folder, const char* name, FileInfo* info) {
    const OpenFile file(
        OpenPath(PathIn(folder, name), FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT));
    return file ? Inspect(file.Get(), info) : -1;
}

// Locks keep other programs from the bytes that they cover, so this one is beyond the end of any file.
int Lock(int file) {
    OVERLAPPED position{};
    position.OffsetHigh = 0x7FFFFFFF;
    constexpr DWORD kFlags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    return ZeroOrErrno(::LockFileEx(HandleOf(file), kFlags, 0, 1, 0, &position));
}

int Rename(const std::wstring& from, const std::wstring& to) {
    return RetryWhileInUse(
        [&] { return ZeroOrErrno(::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH)); }, true);
}

int Remove(const std::wstring& path) {
    return RetryWhileInUse([&] { return ZeroOrErrno(::DeleteFileW(path.c_str())); });
}

// The system renames the old file to a backup, then the new file to the old one.
int ReplaceIn(int folder, const char* from, const char* to) {
    const std::wstring newPath = PathIn(folder, from), path = PathIn(folder, to), backup = newPath + L".old";
    DWORD error = 0;
    const auto replace = [&] {
        const BOOL good = ::ReplaceFileW(path.c_str(), newPath.c_str(), backup.c_str(), 0, nullptr, nullptr);
        error = good ? 0 : ::GetLastError();
        return good ? 0 : FailWith(error);
    };
    const int result = RetryWhileInUse(replace, true);
    if (result < 0 && error != ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) return result;
    if (result < 0) {  // the first rename succeeded, the second failed
        if (Rename(backup, path) == 0) return FailWith(ERROR_SHARING_VIOLATION);
        if (Rename(newPath, path) < 0) return -1;
    }
    (void)Remove(backup);
    return 0;
}

}  // namespace

std::wstring PathOf(int file) {
    std::wstring path(kMaxPath, L'\0');
    const DWORD length = ::GetFinalPathNameByHandleW(HandleOf(file), path.data(), kMaxPath, VOLUME_NAME_DOS);
    if (length == 0 || length >= kMaxPath) return OpenPaths()[file];
    path.resize(length);
    return path;
}

std::wstring PathIn(int folder, std::string_view name) {
    std::wstring path = PathOf(folder);
    if (!path.ends_with(L'\\')) path += L'\\';
    return path + ToWide(name);
}

FileCalls SystemFileCalls() {
    FileCalls calls;
    calls.open = Open;
    calls.createIn = [](int folder, const char* name, unsigned) {
        return OpenPath(PathIn(folder, name), GENERIC_READ | GENERIC_WRITE, CREATE_NEW);
    };
    calls.inspect = Inspect;
    calls.inspectIn = InspectIn;
    calls.read = [](int file, void* bytes, std::size_t count) -> std::int64_t {
        return ::_read(file, bytes, static_cast<unsigned>(std::min(count, kMaxTransfer)));
    };
    calls.write = [](int file, const void* bytes, std::size_t count) -> std::int64_t {
        return ::_write(file, bytes, static_cast<unsigned>(std::min(count, kMaxTransfer)));
    };
    calls.rewind = [](int file) { return ::_lseeki64(file, 0, SEEK_SET) == 0 ? 0 : -1; };
    calls.setOwner = [](int, unsigned, unsigned) { return 0; };
    calls.setMode = [](int, unsigned) { return 0; };
    calls.defaultMode = [] { return 0666u; };
    calls.getAccessList = [](int, void*, std::size_t) { return std::int64_t{0}; };
    calls.setAccessList = [](int, const void*, std::size_t) { return 0; };
    calls.lock = Lock;
    calls.flush = ::_commit;
    calls.flushFolder = [](int) { return 0; };  // the system logs its renames
    calls.close = [](int file) {
        OpenPaths().erase(file);
        return ::_close(file);
    };
    calls.replaceIn = ReplaceIn;
    calls.renameIn = [](int folder, const char* from, const char* to) {
        return Rename(PathIn(folder, from), PathIn(folder, to));
    };
    calls.canReplaceOpenFiles = false;
    calls.removeIn = [](int folder, const char* name) { return Remove(PathIn(folder, name)); };
    return calls;
}

}  // namespace boreforge
