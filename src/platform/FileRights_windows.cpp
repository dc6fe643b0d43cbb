#include "platform/FileRights_windows.h"

#include <windows.h>

#include <sddl.h>
#include <winioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileFailure.h"
#include "platform/FileRights.h"
#include "platform/SystemFiles_windows.h"

namespace boreforge {

namespace {

constexpr std::size_t kMaxDescriptor = std::size_t{1} << 17;  // a list has at most 64 KB
constexpr SECURITY_INFORMATION kOwnerAndList = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;

constexpr DWORD kSimpleFlags =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
// The last of them can't be set and so refuses the save.
constexpr DWORD kKeptFlags =
    kSimpleFlags | FILE_ATTRIBUTE_COMPRESSED | FILE_ATTRIBUTE_ENCRYPTED | FILE_ATTRIBUTE_READONLY;

int Refuse() {
    errno = EPERM;
    return -1;
}

bool SetFlags(HANDLE handle, DWORD flags) {
    USHORT format = COMPRESSION_FORMAT_DEFAULT;
    DWORD size = 0;
    if (flags & FILE_ATTRIBUTE_COMPRESSED)
        (void)::DeviceIoControl(handle, FSCTL_SET_COMPRESSION, &format, sizeof format, nullptr, 0, &size,
                                nullptr);
    FILE_BASIC_INFO info{};  // times of zero stay as they are
    info.FileAttributes = FILE_ATTRIBUTE_ARCHIVE | (flags & kSimpleFlags);
    return ::SetFileInformationByHandle(handle, FileBasicInfo, &info, sizeof info);
}

// A security descriptor with its owner and its access list, in a buffer that is aligned for it.
class Descriptor {
  public:
    explicit Descriptor(int file) {
        const std::int64_t length =
            fileCalls.getAttribute(file, kAccessListAttribute, bytes_.data(), bytes_.size());
        good_ = length >= 0;
        length_ = good_ ? static_cast<std::size_t>(length) : 0;
    }
    bool IsGood() const { return good_; }

    // Null if everybody may do everything, as on a file system without rights.
    ACL* List() const {
        BOOL present = FALSE, byDefault = FALSE;
        ACL* list = nullptr;
        const bool found = ::GetSecurityDescriptorDacl(Get(), &present, &list, &byDefault);
        return found && present ? list : nullptr;
    }
    SID* Owner() const {
        void* owner = nullptr;
        BOOL byDefault = FALSE;
        (void)::GetSecurityDescriptorOwner(Get(), &owner, &byDefault);
        return static_cast<SID*>(owner);
    }
    SECURITY_DESCRIPTOR_CONTROL Control() const {
        SECURITY_DESCRIPTOR_CONTROL control = 0;
        DWORD revision = 0;
        (void)::GetSecurityDescriptorControl(Get(), &control, &revision);
        return control;
    }
    bool CopyTo(int file) {
        // Without this request the system drops the mark that entries are inherited.
        if (Control() & SE_DACL_AUTO_INHERITED)
            (void)::SetSecurityDescriptorControl(Get(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
        return fileCalls.setAttribute(file, kAccessListAttribute, bytes_.data(), length_) == 0;
    }

  private:
    PSECURITY_DESCRIPTOR Get() const { return const_cast<char*>(bytes_.data()); }

    std::vector<char> bytes_ = std::vector<char>(kMaxDescriptor);
    std::size_t length_ = 0;
    bool good_ = false;
};

bool CopyFlags(int newFile, int oldFile) {
    DWORD wanted = 0, made = 0;
    return fileCalls.getAttribute(oldFile, kFlagsAttribute, &wanted, sizeof wanted) >= 0 &&
           fileCalls.setAttribute(newFile, kFlagsAttribute, &wanted, sizeof wanted) == 0 &&
           fileCalls.getAttribute(newFile, kFlagsAttribute, &made, sizeof made) >= 0 &&
           (wanted & kKeptFlags) == (made & kKeptFlags);
}

}  // namespace

std::int64_t GetFileAttribute(int file, const char* name, void* value, std::size_t size) {
    const HANDLE handle = HandleOf(file);
    if (std::string_view(name) == kAccessListAttribute) {
        DWORD length = 0;
        const bool good =
            ::GetKernelObjectSecurity(handle, kOwnerAndList, value, static_cast<DWORD>(size), &length);
        return good ? static_cast<std::int64_t>(length) : Refuse();
    }
    FILE_BASIC_INFO info;
    if (!::GetFileInformationByHandleEx(handle, FileBasicInfo, &info, sizeof info)) return Refuse();
    const std::size_t length = std::min(size, sizeof info.FileAttributes);
    std::memcpy(value, &info.FileAttributes, length);
    return static_cast<std::int64_t>(length);
}

int SetFileAttribute(int file, const char* name, const void* value, std::size_t size) {
    if (std::string_view(name) == kAccessListAttribute) {
        const auto descriptor = const_cast<void*>(value);
        return ::SetKernelObjectSecurity(HandleOf(file), DACL_SECURITY_INFORMATION, descriptor) ? 0
                                                                                                : Refuse();
    }
    DWORD flags = 0;
    std::memcpy(&flags, value, std::min(size, sizeof flags));
    return SetFlags(HandleOf(file), flags) ? 0 : Refuse();
}

// True if the list doesn't just repeat that of the folder.
bool HasAccessList(int file) {
    const Descriptor descriptor(file);
    if (!descriptor.IsGood()) return true;
    ACL* const list = descriptor.List();
    if (!list) return false;
    bool isOwn = descriptor.Control() & SE_DACL_PROTECTED;
    void* entry = nullptr;
    for (DWORD i = 0; ::GetAce(list, i, &entry); ++i)
        isOwn = isOwn || !(static_cast<ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE);
    return isOwn;
}

// The owner of the new file is the user, who may not give files away. Whoever the list names keeps access.
bool CopyRights(int newFile, int oldFile) {
    Descriptor old(oldFile);
    const bool keepsList = old.IsGood() && (!old.List() || old.CopyTo(newFile));
    return (keepsList && CopyFlags(newFile, oldFile)) || Fail(FileProblem::RightsLost);
}

// A new file has the rights of its folder. Beside a file with rights of its own it is its owner's alone.
bool LimitRights(int newFile, const FileInfo&, bool likeHasList) {
    if (!likeHasList) return true;
    const Descriptor mine(newFile);
    wchar_t* owner = nullptr;
    if (!mine.IsGood() || !::ConvertSidToStringSidW(mine.Owner(), &owner))
        return Fail(FileProblem::RightsLost);
    const std::wstring text = L"D:P(A;;FA;;;" + std::wstring(owner) + L")";
    (void)::LocalFree(owner);
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ULONG size = 0;
    if (!::ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &descriptor,
                                                                &size))
        return Fail(FileProblem::RightsLost);
    const bool good = fileCalls.setAttribute(newFile, kAccessListAttribute, descriptor, size) == 0;
    (void)::LocalFree(descriptor);
    return good || Fail(FileProblem::RightsLost);
}

}  // namespace boreforge
