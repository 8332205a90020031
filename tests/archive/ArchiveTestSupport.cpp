#include "ArchiveTestSupport.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace px::test {

namespace fs = std::filesystem;

std::string sevenZip() {
    for (const char* name : {"7zz", "7z"}) {
        if (runProcess({name, "i"}).exitStatus == 0) return name;
    }
    return {};
}

void writeFile(const std::string& path, const std::string& bytes, mode_t mode) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    ::chmod(path.c_str(), mode);
}

void setModificationTime(const std::string& path, std::time_t time) {
    timespec times[2] = {{time, 0}, {time, 0}};
    ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

std::string randomBytes(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(count, '\0');
    for (auto& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

std::vector<std::string> treeOf(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::string name = fs::relative(entry.path(), folder).string();
        names.push_back(entry.is_directory() ? name + "/" : name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

namespace {

constexpr const char* kListScript = R"(
import json, struct, sys, zipfile
def aes_strength(extra):
    while len(extra) >= 4:
        tag, size = struct.unpack("<HH", extra[:4])
        if tag == 0x9901:
            return extra[4 + 4]
        extra = extra[4 + size:]
    return 0
with zipfile.ZipFile(sys.argv[1]) as z:
    print(json.dumps([{"name": i.filename, "flag_bits": i.flag_bits,
        "compress_type": i.compress_type, "compress_size": i.compress_size,
        "file_size": i.file_size, "external_attr": i.external_attr,
        "create_system": i.create_system, "date_time": list(i.date_time),
        "aes_strength": aes_strength(i.extra)} for i in z.infolist()]))
)";

constexpr const char* kDeflateScript = R"(
import sys, zlib
c = zlib.compressobj(int(sys.argv[2]), zlib.DEFLATED, -15, 8)
data = open(sys.argv[1], "rb").read()
print(len(c.compress(data) + c.flush()))
)";

} // namespace

nlohmann::json listEntries(const std::string& archive) {
    ProcessResult listed = runProcess({"python3", "-c", kListScript, archive});
    if (listed.exitStatus != 0) {
        ADD_FAILURE() << "python could not read " << archive << ": " << listed.err;
        return nlohmann::json::array();
    }
    return nlohmann::json::parse(listed.out);
}

std::int64_t deflatedSize(const std::string& path, int level) {
    ProcessResult result =
        runProcess({"python3", "-c", kDeflateScript, path, std::to_string(level)});
    return result.exitStatus == 0 ? std::stoll(result.out) : -1;
}

} // namespace px::test
