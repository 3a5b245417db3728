#include "FileAttributes.h"

#include "SettingsFailure.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

constexpr char kAccessList[] = "system.posix_acl_access";

bool ChangeOwner(const std::string& iFile, int iTo, uid_t iUser, gid_t iGroup)
{
    if (fchown(iTo, iUser, iGroup) == 0)
        return true;
    if (errno != EPERM && errno != EINVAL) // EINVAL: the id means nothing in this container
        RaiseSystemFailure(iFile, "give the new file its owner", errno);
    return false;
}

struct Kept {
    bool user;
    bool group;
};

Kept CopyOwner(const std::string& iFile, const struct stat& iStatus, int iTo)
{
    struct stat made;
    if (fstat(iTo, &made) != 0)
        RaiseSystemFailure(iFile, "look at the new file", errno);
    const bool user = made.st_uid == iStatus.st_uid;
    const bool group = made.st_gid == iStatus.st_gid;
    if ((user && group) || ChangeOwner(iFile, iTo, iStatus.st_uid, iStatus.st_gid))
        return {true, true};
    return {user, group || ChangeOwner(iFile, iTo, made.st_uid, iStatus.st_gid)};
}

// The names of the attributes, each with a NUL behind; none where there are no such things.
std::string AttributeNames(int iFrom)
{
    const ssize_t size = flistxattr(iFrom, nullptr, 0);
    if (size <= 0)
        return {};
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t got = flistxattr(iFrom, names.data(), names.size());
    names.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return names;
}

bool CopyAttribute(int iFrom, int iTo, const char* iName)
{
    const ssize_t size = fgetxattr(iFrom, iName, nullptr, 0);
    if (size < 0)
        return false;
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t got = fgetxattr(iFrom, iName, value.data(), value.size());
    return got >= 0 && fsetxattr(iTo, iName, value.data(), static_cast<std::size_t>(got), 0) == 0;
}

// Takes away the access list that the directory gave the new file.
void RemoveAccessList(const std::string& iFile, int iTo)
{
    if (fremovexattr(iTo, kAccessList) != 0 && errno != ENODATA && errno != EOPNOTSUPP)
        RaiseSystemFailure(iFile, "take the access list off the new file", errno);
}

// Whether the access list, if there is one, could follow. Labels and notes of other programs follow
// when they can.
bool CopyAttributes(const std::string& iFile, int iFrom, int iTo)
{
    const std::string names = AttributeNames(iFrom);
    std::optional<bool> accessList;
    for (const char* each = names.c_str(); *each; each += std::strlen(each) + 1) {
        const bool copied = CopyAttribute(iFrom, iTo, each);
        if (std::strcmp(each, kAccessList) == 0)
            accessList = copied;
    }
    if (!accessList.value_or(false))
        RemoveAccessList(iFile, iTo);
    return accessList.value_or(true);
}

} // namespace

void CopyFileAttributes(const std::string& iFile, int iFrom, const struct stat& iStatus, int iTo)
{
    const Kept kept = CopyOwner(iFile, iStatus, iTo);
    const bool accessList = CopyAttributes(iFile, iFrom, iTo);
    mode_t mode = iStatus.st_mode & 07777;
    if (!kept.user)
        mode &= ~static_cast<mode_t>(S_ISUID);
    if (!kept.group || !accessList) {
        // The group's permissions would go to another group, or to all whom the list kept out: it
        // gets no more than everybody has.
        const mode_t group = mode & (mode << 3) & S_IRWXG;
        mode = (mode & ~static_cast<mode_t>(S_IRWXG | S_ISGID)) | group;
    }
    if (fchmod(iTo, mode) != 0)
        RaiseSystemFailure(iFile, "give the new file its permissions", errno);
}
