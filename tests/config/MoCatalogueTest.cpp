#include "config/MoCatalogue.h"

#include "config/MoBuilder.h"

#include <gtest/gtest.h>

namespace px {
namespace {

using Entries = std::vector<std::pair<std::string, std::string>>;

const Entries kSample{{"", test::kUtf8Header},
                      {"Paste", "粘贴"},
                      {"Delete Tip", "Delete the selected items permanently?"},
                      {"Same FileName Tip", "“%@” already exists."}};

TEST(MoCatalogueTest, ReadsBothByteOrders) {
    for (bool bigEndian : {false, true}) {
        auto catalogue = MoCatalogue::parse(test::buildMoCatalogue(kSample, bigEndian));
        ASSERT_FALSE(catalogue.isError()) << catalogue.error().message;
        EXPECT_EQ(catalogue.value().size(), 3u) << "the header entry is not a translation";
        EXPECT_EQ(catalogue.value().find("Paste"), "粘贴");
        EXPECT_EQ(catalogue.value().find("Same FileName Tip"), "“%@” already exists.");
        EXPECT_FALSE(catalogue.value().find("Cut"));
        EXPECT_FALSE(catalogue.value().find(""));
        EXPECT_FALSE(catalogue.value().find("Past"));
    }
}

TEST(MoCatalogueTest, PluralEntriesGiveTheirSingularAndUnsortedInputIsFound) {
    const Entries entries{{"zeta", "last"},
                          {std::string("file\0files", 10), std::string("Datei\0Dateien", 13)},
                          {"alpha", "first"}};
    auto catalogue = MoCatalogue::parse(test::buildMoCatalogue(entries));
    ASSERT_FALSE(catalogue.isError());
    EXPECT_EQ(catalogue.value().find("file"), "Datei");
    EXPECT_EQ(catalogue.value().find("alpha"), "first");
    EXPECT_EQ(catalogue.value().find("zeta"), "last");
}

TEST(MoCatalogueTest, EmptyOrInvalidUtf8TranslationsAreLeftOut) {
    const Entries entries{{"Paste", ""}, {"Cut", "\xff\xfe broken"}, {"Lock", "Lock it"}};
    auto catalogue = MoCatalogue::parse(test::buildMoCatalogue(entries));
    ASSERT_FALSE(catalogue.isError());
    EXPECT_FALSE(catalogue.value().find("Paste"));
    EXPECT_FALSE(catalogue.value().find("Cut"));
    EXPECT_EQ(catalogue.value().find("Lock"), "Lock it");
}

TEST(MoCatalogueTest, CataloguesInOtherCharsetsAreRefused) {
    const Entries entries{{"", "Content-Type: text/plain; charset=GB2312\n"}, {"Paste", "x"}};
    EXPECT_TRUE(MoCatalogue::parse(test::buildMoCatalogue(entries)).isError());
}

TEST(MoCatalogueTest, DamagedHeadersAreRefused) {
    const std::string good = test::buildMoCatalogue(kSample);
    EXPECT_TRUE(MoCatalogue::parse("").isError());
    EXPECT_TRUE(MoCatalogue::parse(good.substr(0, 27)).isError());
    std::string wrongSignature = good;
    wrongSignature[0] = 'x';
    EXPECT_TRUE(MoCatalogue::parse(wrongSignature).isError());
    std::string newRevision = good;
    newRevision[6] = 2; // major revision 2
    EXPECT_TRUE(MoCatalogue::parse(newRevision).isError());
    std::string hugeCount = good;
    hugeCount[11] = '\x7f';
    EXPECT_TRUE(MoCatalogue::parse(hugeCount).isError());
}

TEST(MoCatalogueTest, EveryTruncationIsRefused) {
    const std::string good = test::buildMoCatalogue(kSample);
    ASSERT_FALSE(MoCatalogue::parse(good).isError());
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_TRUE(MoCatalogue::parse(good.substr(0, length)).isError()) << length;
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
            if (auto text = catalogue.value().find("Paste")) {
                EXPECT_LE(text->size(), good.size());
            }
        }
    }
}

} // namespace
} // namespace px
