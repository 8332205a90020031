#include "CompressTestSupport.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <random>
#include <sys/stat.h>

namespace px::test {

namespace fs = std::filesystem;

namespace {

constexpr const char* kListScript = R"(
import json, struct, sys, zipfile
def aes_strength(extra):
    while len(extra) >= 4:
        tag, size = struct.unpack("<HH", extra[:4])
        if tag == 0x9901:
            return extra[8]
        extra = extra[4 + size:]
    return 0
with zipfile.ZipFile(sys.argv[1]) as z:
    print(json.dumps([{"name": i.filename, "encrypted": bool(i.flag_bits & 1),
        "aes": aes_strength(i.extra)} for i in z.infolist()]))
)";

} // namespace

std::vector<ZipEntry> zipEntries(const std::string& archive) {
    ProcessResult listed = runProcess({"python3", "-c", kListScript, archive});
    if (listed.exitStatus != 0) {
        ADD_FAILURE() << "python could not read " << archive << ": " << listed.err;
        return {};
    }
    std::vector<ZipEntry> entries;
    for (const auto& entry : nlohmann::json::parse(listed.out))
        entries.push_back({entry.at("name"), entry.at("encrypted"), entry.at("aes")});
    return entries;
}

std::vector<std::string> entryNames(const std::string& archive) {
    std::vector<std::string> names;
    for (const auto& entry : zipEntries(archive))
        names.push_back(entry.name);
    return names;
}

std::string sevenZip() {
    for (const char* name : {"7zz", "7z"})
        if (runProcess({name, "i"}).exitStatus == 0) return name;
    return {};
}

ProcessResult extractWithSevenZip(const std::string& archive, const std::string& folder,
                                  const std::string& password) {
    return runProcess({sevenZip(), "x", "-y", "-p" + password, "-o" + folder, archive});
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

void writeRandomFile(const std::string& path, std::size_t size) {
    std::mt19937_64 random(size);
    std::string bytes(size, '\0');
    for (std::size_t at = 0; at + 8 <= size; at += 8) {
        const std::uint64_t value = random();
        std::memcpy(bytes.data() + at, &value, 8);
    }
    std::ofstream(path, std::ios::binary) << bytes;
}

void makeFifo(const std::string& path) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0644), 0) << path;
}

} // namespace px::test
