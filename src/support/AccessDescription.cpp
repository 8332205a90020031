#include "support/AccessDescription.h"

#include <array>
#include <fmt/format.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace px {

namespace {

char kindLetter(mode_t mode) {
    if (S_ISDIR(mode)) return 'd';
    if (S_ISLNK(mode)) return 'l';
    if (S_ISCHR(mode)) return 'c';
    if (S_ISBLK(mode)) return 'b';
    if (S_ISFIFO(mode)) return 'p';
    if (S_ISSOCK(mode)) return 's';
    return '-';
}

// The three letters of one class. The `special` bit (set-user-id, set-group-id or sticky) shows
// as `specialLetter` over an execute bit ("s", "t") and as `specialAlone` without one ("S", "T").
std::string permissionTriple(mode_t mode, mode_t read, mode_t write, mode_t execute, mode_t special,
                             char specialLetter, char specialAlone) {
    std::string text{(mode & read) ? 'r' : '-', (mode & write) ? 'w' : '-', '-'};
    if (mode & special)
        text[2] = (mode & execute) ? specialLetter : specialAlone;
    else if (mode & execute)
        text[2] = 'x';
    return text;
}

std::string modeText(mode_t mode) {
    return kindLetter(mode) + permissionTriple(mode, S_IRUSR, S_IWUSR, S_IXUSR, S_ISUID, 's', 'S') +
           permissionTriple(mode, S_IRGRP, S_IWGRP, S_IXGRP, S_ISGID, 's', 'S') +
           permissionTriple(mode, S_IROTH, S_IWOTH, S_IXOTH, S_ISVTX, 't', 'T');
}

std::string userName(uid_t uid) {
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found) == 0 && found)
        return found->pw_name;
    return std::to_string(uid);
}

std::string groupName(gid_t gid) {
    std::vector<char> buffer(16384);
    group entry{};
    group* found = nullptr;
    if (::getgrgid_r(gid, &entry, buffer.data(), buffer.size(), &found) == 0 && found)
        return found->gr_name;
    return std::to_string(gid);
}

std::string parentOf(const std::string& path) {
    auto slash = path.find_last_of('/');
    if (slash == std::string::npos) return {};
    return slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace

std::string describeAccess(const std::string& path) {
    std::string described = path;
    struct stat info {};
    while (::stat(described.c_str(), &info) != 0) {
        std::string parent = parentOf(described);
        if (parent.empty() || parent == described) return fmt::format("? ? ? {}", path);
        described = parent;
    }
    return fmt::format("{} {} {} {}", modeText(info.st_mode), userName(info.st_uid),
                       groupName(info.st_gid), described);
}

} // namespace px
