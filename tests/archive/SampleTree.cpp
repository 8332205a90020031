#include "SampleTree.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace px::test {

namespace {

std::string prose(std::size_t words) {
    static const char* vocabulary[] = {"menu",     "folder", "archive", "the",  "of", "selected",
                                       "password", "entry",  "window",  "copy", "é",  "данные"};
    std::string text;
    unsigned state = 7;
    for (std::size_t i = 0; i < words; ++i) {
        state = state * 1103515245u + 12345u;
        text += vocabulary[(state >> 16) % std::size(vocabulary)];
        text += (i % 13 == 12) ? "\n" : " ";
    }
    return text;
}

} // namespace

SampleTree::SampleTree(const std::string& rootFolder) : root(rootFolder) {
    files = {
        {"docs/readme.txt", prose(40000)},
        {"docs/empty.txt", ""},
        {"data/random.bin", randomBytes(300000, 1)},
        {"data/deep/er/small.bin", randomBytes(100, 2)},
        {"Привет мир.txt", "кириллица"},
        {"日本語のファイル.txt", "日本語"},
        {"café déjà vu.txt", "accents"},
        {"Äpfel/Öl.txt", "umlauts"},
        {"odd name $(echo x) \"q\".txt", "shell characters"},
    };
    for (const auto& [name, bytes] : files)
        writeFile(root + "/" + name, bytes);
    std::filesystem::create_directories(root + "/" + emptyFolder);
}

bool SampleTree::pack(const std::string& archive,
                      const std::optional<std::string>& password) const {
    SSZipArchive zip(archive);
    if (!zip.open()) return false;
    for (const auto& [name, bytes] : files) {
        EXPECT_TRUE(zip.writeFileAtPath(root + "/" + name, name, password)) << name;
    }
    EXPECT_TRUE(zip.writeFolderAtPath(root + "/" + emptyFolder, emptyFolder, password));
    bool closed = zip.close();
    EXPECT_TRUE(closed) << (zip.lastError() ? zip.lastError()->message : "");
    return closed;
}

std::vector<std::string> SampleTree::entryNames() const {
    std::vector<std::string> names;
    for (const auto& file : files)
        names.push_back(file.first);
    names.push_back(emptyFolder + "/");
    std::sort(names.begin(), names.end());
    return names;
}

void SampleTree::expectExtractedTo(const std::string& folder) const {
    for (const auto& [name, bytes] : files) {
        EXPECT_TRUE(std::filesystem::is_regular_file(folder + "/" + name)) << name;
        EXPECT_TRUE(readFile(folder + "/" + name) == bytes) << name << " differs";
    }
    EXPECT_TRUE(std::filesystem::is_directory(folder + "/" + emptyFolder));
    EXPECT_TRUE(std::filesystem::is_empty(folder + "/" + emptyFolder));
}

} // namespace px::test
