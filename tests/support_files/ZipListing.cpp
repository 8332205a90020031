#include "ZipListing.h"

#include "TestSupport.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace px::test {

namespace {

// One line per entry: the numbers, then the name after a tab.
constexpr const char* kListScript = R"(
import struct, sys, zipfile
def aes_strength(extra):
    while len(extra) >= 4:
        tag, size = struct.unpack("<HH", extra[:4])
        if tag == 0x9901:
            return extra[8]
        extra = extra[4 + size:]
    return 0
with zipfile.ZipFile(sys.argv[1]) as z:
    for i in z.infolist():
        numbers = [i.flag_bits, i.compress_type, i.compress_size, i.file_size, i.external_attr,
                   i.create_system, *i.date_time, aes_strength(i.extra)]
        print(" ".join(map(str, numbers)) + "\t" + i.filename)
)";

ZipEntry parseEntry(const std::string& line) {
    ZipEntry entry;
    std::istringstream in(line.substr(0, line.find('\t')));
    in >> entry.flagBits >> entry.compressType >> entry.compressSize >> entry.fileSize >>
        entry.externalAttr >> entry.createSystem;
    for (int& part : entry.dateTime)
        in >> part;
    in >> entry.aesStrength;
    entry.name = line.substr(line.find('\t') + 1);
    return entry;
}

} // namespace

std::vector<ZipEntry> zipEntries(const std::string& archive) {
    const ProcessResult listed = runProcess({"python3", "-c", kListScript, archive});
    if (listed.exitStatus != 0) {
        ADD_FAILURE() << "python could not read " << archive << ": " << listed.err;
        return {};
    }
    std::vector<ZipEntry> entries;
    std::istringstream lines(listed.out);
    for (std::string line; std::getline(lines, line);)
        entries.push_back(parseEntry(line));
    return entries;
}

std::vector<std::string> zipEntryNames(const std::string& archive) {
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

std::vector<std::string> treeOf(const std::string& folder) {
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::string name = fs::relative(entry.path(), folder).string();
        names.push_back(entry.is_directory() ? name + "/" : name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace px::test
