#include "support/LocalMounts.h"

#include "support/FileIO.h"

#include <array>
#include <chrono>
#include <mutex>
#include <sstream>
#include <vector>

namespace px::mounts {

namespace {

constexpr std::array<std::string_view, 16> kNetworkTypes{
    "nfs", "nfs4", "cifs",  "smb3",   "smbfs",     "ncpfs",      "afs",   "coda",
    "9p",  "ceph", "davfs", "lustre", "glusterfs", "fuse.sshfs", "sshfs", "fuse.gvfsd-fuse"};

bool isNetworkType(std::string_view type) {
    for (auto network : kNetworkTypes)
        if (type == network) return true;
    // FUSE bridges to remote stores name themselves fuse.<program>.
    return type.starts_with("fuse.") && (type.find("rclone") != std::string_view::npos ||
                                         type.find("s3fs") != std::string_view::npos ||
                                         type.find("gvfs") != std::string_view::npos);
}

// Mount points escape blanks, tabs, newlines and back-slashes as three octal digits.
std::string unescape(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            int value = 0;
            bool octal = true;
            for (std::size_t j = 1; j <= 3 && octal; ++j) {
                char c = text[i + j];
                octal = c >= '0' && c <= '7';
                value = value * 8 + (c - '0');
            }
            if (octal) {
                result.push_back(static_cast<char>(value));
                i += 3;
                continue;
            }
        }
        result.push_back(text[i]);
    }
    return result;
}

bool covers(const std::string& mountPoint, const std::string& path) {
    if (mountPoint == "/") return true;
    return path.starts_with(mountPoint) &&
           (path.size() == mountPoint.size() || path[mountPoint.size()] == '/');
}

// One mountinfo line: fields 5 (mount point) and, after the " - " separator, the type.
bool parseLine(const std::string& line, std::string& mountPoint, std::string& type) {
    std::istringstream fields(line);
    std::string field;
    for (int i = 0; i < 5 && fields >> field; ++i)
        if (i == 4) mountPoint = unescape(field);
    while (fields >> field)
        if (field == "-") return static_cast<bool>(fields >> type);
    return false;
}

// The table, read again at most once a second: a menu request consults it for every listed
// folder.
std::string currentMountInfo() {
    static std::mutex mutex;
    static std::string cached;
    static std::chrono::steady_clock::time_point readAt;
    std::lock_guard guard(mutex);
    auto now = std::chrono::steady_clock::now();
    if (cached.empty() || now - readAt > std::chrono::seconds(1)) {
        auto contents = io::readWholeFile("/proc/self/mountinfo");
        cached = contents.isError() ? std::string() : contents.releaseValue();
        readAt = now;
    }
    return cached;
}

} // namespace

bool isOnLocalMount(const std::string& path, std::string_view mountInfo) {
    std::size_t bestLength = 0;
    bool local = true;
    std::istringstream lines{std::string(mountInfo)};
    std::string mountPoint, type;
    for (std::string line; std::getline(lines, line);) {
        if (!parseLine(line, mountPoint, type) || !covers(mountPoint, path)) continue;
        if (mountPoint.size() < bestLength) continue;
        bestLength = mountPoint.size();
        local = !isNetworkType(type);
    }
    return local;
}

bool isOnLocalMount(const std::string& path) {
    return isOnLocalMount(path, currentMountInfo());
}

} // namespace px::mounts
