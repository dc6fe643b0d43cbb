#include "platform/FileCalls.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <winioctl.h>

#include <algorithm>
#include <cerrno>
#include <map>

#include "platform/FileRights_windows.h"
#include "platform/SystemFiles_windows.h"
#include "platform/WideText_windows.h"

namespace boreforge {

namespace {

// Others may read, change, rename and delete what we have open, as on other systems; the handler of Ctrl+C
// deletes the temporary file.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
// Folders can be opened too.
constexpr DWORD kCommon = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS;
constexpr std::size_t kMaxTransfer = std::size_t{1} << 30;  // the system counts in 32 bits

constexpr DWORD kMaxWait = 1000, kWait = 20;  // milliseconds

constexpr std::int64_t kTicksPerSecond = 10'000'000, kTicksFrom1601To1970 = 116'444'736'000'000'000;

int ErrorNumber(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
            return ENOENT;
        case ERROR_ACCESS_DENIED:
            return EACCES;
        case ERROR_SHARING_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
            return EBUSY;
        case ERROR_LOCK_VIOLATION:
            return EWOULDBLOCK;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return EEXIST;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return ENOSPC;
        case ERROR_FILE_TOO_LARGE:
            return EFBIG;
        case ERROR_WRITE_PROTECT:
            return EROFS;
        case ERROR_INVALID_NAME:
        case ERROR_DIRECTORY:
            return EINVAL;
        case ERROR_FILENAME_EXCED_RANGE:
            return ENAMETOOLONG;
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY:
            return ENOMEM;
        case ERROR_TOO_MANY_OPEN_FILES:
            return EMFILE;
        default:
            return EIO;
    }
}

int FailWith(DWORD error) {
    errno = ErrorNumber(error);
    return -1;
}

int Result(BOOL good) { return good ? 0 : FailWith(::GetLastError()); }

// Repeats a call for up to a second while another program holds the file: virus scanners and indexers open
// what has just been written.
template <class Call>
auto Patiently(const Call& call, bool deniedMayPass = false) {
    for (DWORD waited = 0;; waited += kWait) {
        auto result = call();
        if (result) return result;
        const DWORD error = ::GetLastError();
        const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_USER_MAPPED_FILE ||
                          (deniedMayPass && error == ERROR_ACCESS_DENIED);
        if (!held || waited >= kMaxWait) return decltype(result){};
        ::Sleep(kWait);
    }
}

// A handle or null.
HANDLE OpenPath(const std::wstring& path, DWORD access, DWORD creation, DWORD flags = 0) {
    const HANDLE handle =
        ::CreateFileW(path.c_str(), access, kShareAll, nullptr, creation, kCommon | flags, nullptr);
    return handle == INVALID_HANDLE_VALUE ? nullptr : handle;
}

// The number of a file with this handle, for a handle that may be null.
int NumberOf(HANDLE handle) {
    if (!handle) return FailWith(::GetLastError());
    const int file = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
    if (file < 0) (void)::CloseHandle(handle);
    return file;
}

// The paths by which the files were opened that are open now.
std::map<int, std::wstring>& OpenPaths() {
    static std::map<int, std::wstring> paths;
    return paths;
}

int Open(const char* path, OpenFor purpose) {
    // To copy rights from and to it.
    constexpr DWORD kWriting = GENERIC_READ | GENERIC_WRITE | WRITE_DAC;
    const std::wstring systemPath = ToSystemPath(path);
    const auto patiently = [&](DWORD access, DWORD creation) {
        const int file = NumberOf(Patiently([&] { return OpenPath(systemPath, access, creation); }));
        if (file >= 0) OpenPaths()[file] = systemPath;
        return file;
    };
    switch (purpose) {
        case OpenFor::Reading:
            return patiently(GENERIC_READ, OPEN_EXISTING);
        case OpenFor::ReadingAndWriting:
            return patiently(GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
        case OpenFor::Creating:
            return patiently(kWriting, OPEN_ALWAYS);
        case OpenFor::Folder:
            return patiently(FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    }
    return -1;
}

int CreateIn(int folder, const char* name, unsigned) {
    const DWORD access = GENERIC_READ | GENERIC_WRITE | WRITE_DAC;
    return NumberOf(OpenPath(PathIn(folder, name), access, CREATE_NEW));
}

std::int64_t Nanoseconds(const LARGE_INTEGER& ticks) {
    return (ticks.QuadPart - kTicksFrom1601To1970) * (1'000'000'000 / kTicksPerSecond);
}

bool IsLink(HANDLE handle) {
    FILE_ATTRIBUTE_TAG_INFO info;
    return ::GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &info, sizeof info) &&
           (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) && info.ReparseTag == IO_REPARSE_TAG_SYMLINK;
}

int InspectHandle(HANDLE handle, FileInfo* info) {
    *info = {};
    if (::GetFileType(handle) != FILE_TYPE_DISK) return 0;
    BY_HANDLE_FILE_INFORMATION found;
    FILE_BASIC_INFO times;
    if (!::GetFileInformationByHandle(handle, &found) ||
        !::GetFileInformationByHandleEx(handle, FileBasicInfo, &times, sizeof times))
        return FailWith(::GetLastError());
    const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
    info->device = found.dwVolumeSerialNumber;
    info->number = join(found.nFileIndexHigh, found.nFileIndexLow);
    info->size = static_cast<std::int64_t>(join(found.nFileSizeHigh, found.nFileSizeLow));
    info->modified = Nanoseconds(times.LastWriteTime);
    info->changed = Nanoseconds(times.ChangeTime);
    info->mode = 0666;
    info->isLink = IsLink(handle);
    info->isRegular = !info->isLink && !(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    return 0;
}

int InspectIn(int folder, const char* name, FileInfo* info) {
    const OpenFile file(NumberOf(
        OpenPath(PathIn(folder, name), FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT)));
    return file ? InspectHandle(HandleOf(file.Get()), info) : -1;
}

std::int64_t RealPath(int file, char* path, std::size_t size) {
    const std::string real = ToUtf8(PathOf(file));
    if (real.empty() || real.size() > size) return FailWith(ERROR_FILENAME_EXCED_RANGE);
    return static_cast<std::int64_t>(real.copy(path, size));
}

// A transfer of at most a gigabyte by ReadFile or WriteFile.
template <class Transfer, class Pointer>
std::int64_t Move(Transfer transfer, int file, Pointer bytes, std::size_t count) {
    DWORD moved = 0;
    const auto part = static_cast<DWORD>(std::min(count, kMaxTransfer));
    if (!transfer(HandleOf(file), bytes, part, &moved, nullptr)) return FailWith(::GetLastError());
    return moved;
}

int Reserve(int file, std::int64_t length) {
    FILE_ALLOCATION_INFO info;
    info.AllocationSize.QuadPart = length;
    const BOOL good = ::SetFileInformationByHandle(HandleOf(file), FileAllocationInfo, &info, sizeof info);
    return !good && ErrorNumber(::GetLastError()) == ENOSPC ? FailWith(ERROR_DISK_FULL) : 0;
}

int Rewind(int file) {
    return Result(::SetFilePointerEx(HandleOf(file), LARGE_INTEGER{}, nullptr, FILE_BEGIN));
}

int Truncate(int file, std::int64_t length) {
    FILE_END_OF_FILE_INFO info;
    info.EndOfFile.QuadPart = length;
    return Result(::SetFileInformationByHandle(HandleOf(file), FileEndOfFileInfo, &info, sizeof info));
}

// Locks keep other programs from the bytes that they cover, so this one is beyond the end of any file.
int Lock(int file) {
    OVERLAPPED place{};
    place.OffsetHigh = 0x7FFFFFFF;
    constexpr DWORD kFlags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    if (::LockFileEx(HandleOf(file), kFlags, 0, 1, 0, &place)) return 0;
    const DWORD error = ::GetLastError();
    return FailWith(error == ERROR_IO_PENDING ? ERROR_LOCK_VIOLATION : error);
}

int RenameIn(int folder, const char* from, const char* to) {
    const std::wstring oldPath = PathIn(folder, from), newPath = PathIn(folder, to);
    constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return Result(Patiently([&] { return ::MoveFileExW(oldPath.c_str(), newPath.c_str(), kFlags); }, true));
}

}  // namespace

HANDLE HandleOf(int file) { return reinterpret_cast<HANDLE>(::_get_osfhandle(file)); }

std::wstring PathOf(int file) {
    std::wstring path(kMaxPath / 3, L'\0');
    const DWORD length = ::GetFinalPathNameByHandleW(HandleOf(file), path.data(),
                                                     static_cast<DWORD>(path.size()), VOLUME_NAME_DOS);
    if (length == 0 || length >= path.size()) return OpenPaths()[file];
    path.resize(length);
    return path;
}

std::wstring PathIn(int folder, const std::string& name) {
    std::wstring path = PathOf(folder);
    if (!path.ends_with(L'\\')) path += L'\\';
    return path + ToWide(name);
}

FileCalls SystemFileCalls() {
    FileCalls calls;
    calls.open = Open;
    calls.createIn = CreateIn;
    calls.inspect = [](int file, FileInfo* info) { return InspectHandle(HandleOf(file), info); };
    calls.inspectIn = InspectIn;
    calls.realPath = RealPath;
    calls.read = [](int file, void* bytes, std::size_t count) {
        return Move(::ReadFile, file, bytes, count);
    };
    calls.write = [](int file, const void* bytes, std::size_t count) {
        return Move(::WriteFile, file, bytes, count);
    };
    calls.reserve = Reserve;
    calls.rewind = Rewind;
    calls.truncate = Truncate;
    calls.setOwner = [](int, unsigned) { return 0; };  // these three are all in the access list
    calls.setGroup = [](int, unsigned) { return 0; };
    calls.setMode = [](int, unsigned) { return 0; };
    calls.usualMode = [] { return 0666u; };
    calls.listAttributes = [](int, char*, std::size_t) -> std::int64_t { return 0; };
    calls.getAttribute = GetFileAttribute;
    calls.setAttribute = SetFileAttribute;
    calls.removeAttribute = [](int, const char*) { return 0; };
    calls.lock = Lock;
    calls.flush = [](int file) { return Result(::FlushFileBuffers(HandleOf(file))); };
    calls.flushFolder = [](int) { return 0; };  // renameIn returns when the folder is on the disk
    calls.close = [](int file) {
        OpenPaths().erase(file);
        return ::_close(file);
    };
    calls.renameIn = RenameIn;
    calls.replacesOpenFiles = false;
    calls.removeIn = [](int folder, const char* name) {
        const std::wstring path = PathIn(folder, name);
        return Result(Patiently([&] { return ::DeleteFileW(path.c_str()); }));
    };
    return calls;
}

}  // namespace boreforge
