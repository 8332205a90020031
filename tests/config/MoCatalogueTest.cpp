#include "support/MoCatalogue.h"

#include "config/MoBuilder.h"

#include <gtest/gtest.h>

namespace px {
namespace {

using Entries = std::vector<std::pair<std::string, std::string>>;

const Entries kSample{{"", test::kUtf8Header},
                      {"Paste", "粘贴"},
                      {"Same FileName Tip", "“%@” already exists."},
                      {std::string("file\0files", 10), std::string("Datei\0Dateien", 13)},
                      {"Cut", "\xff\xfe broken"},
                      {"Lock", ""}};

TEST(MoCatalogueTest, ReadsBothByteOrdersAndLeavesOutUnusableEntries) {
    for (bool bigEndian : {false, true}) {
        auto catalogue = MoCatalogue::parse(test::buildMoCatalogue(kSample, bigEndian));
        ASSERT_FALSE(catalogue.isError()) << catalogue.error().message;
        const auto& found = catalogue.value();
        EXPECT_EQ(found.size(), 3u) << "no header, invalid UTF-8 or empty translation";
        EXPECT_EQ(found.find("Paste"), "粘贴");
        EXPECT_EQ(found.find("Same FileName Tip"), "“%@” already exists.");
        EXPECT_EQ(found.find("file"), "Datei") << "a plural entry gives its singular";
        for (const char* missing : {"Cut", "Lock", "", "Past"})
            EXPECT_FALSE(found.find(missing)) << missing;
    }
}

TEST(MoCatalogueTest, DamagedHeadersTruncationsAndOtherCharsetsAreRefused) {
    const std::string good = test::buildMoCatalogue(kSample);
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_TRUE(MoCatalogue::parse(good.substr(0, length)).isError()) << length;
    for (auto [at, value] : {std::pair{0, 'x'}, {6, '\2'}, {11, '\x7f'}}) {
        std::string damaged = good;
        damaged[at] = value; // signature, major revision, count
        EXPECT_TRUE(MoCatalogue::parse(damaged).isError()) << at;
    }
    const Entries gb{{"", "Content-Type: text/plain; charset=GB2312\n"}, {"Paste", "x"}};
    EXPECT_TRUE(MoCatalogue::parse(test::buildMoCatalogue(gb)).isError());
}

TEST(MoCatalogueTest, CorruptedBytesNeverLeadOutsideTheFile) {
    const std::string good = test::buildMoCatalogue(kSample);
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (char value : {'\0', '\x7f', '\xff'}) {
            std::string bytes = good;
            bytes[at] = value;
            auto catalogue = MoCatalogue::parse(bytes);
            if (catalogue.isError()) continue;
            EXPECT_LE(catalogue.value().size(), 3u) << at;
            EXPECT_LE(catalogue.value().find("Paste").value_or("").size(), good.size());
        }
    }
}

} // namespace
} // namespace px
