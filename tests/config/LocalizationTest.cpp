#include "support/Localization.h"

#include "config/MoBuilder.h"
#include "config/PoFile.h"
#include "support/LanguageChoice.h"
#include "support_files/TestSupport.h"

#include <atomic>
#include <gtest/gtest.h>
#include <regex>
#include <thread>

namespace px {
namespace {

using test::ScopedEnv;
using test::TempDir;
using Names = std::vector<std::string>;

TEST(LanguageChoiceTest, FollowsTheGettextOrderAndDropsUnsafeNames) {
    struct Case {
        std::vector<std::string> environment; // LANGUAGE, LC_ALL, LC_MESSAGES, LANG
        Names expected;
    };
    const std::vector<Case> cases{
        {{"", "", "", ""}, {"en"}},
        {{"zh_CN", "", "", ""}, {"en"}},
        {{"zh_CN", "C", "", "zh_CN.UTF-8"}, {"en"}},
        {{"", "", "POSIX", "zh_CN.UTF-8"}, {"en"}},
        {{"", "", "", "zh_CN.UTF-8"}, {"zh_CN", "zh", "en"}},
        {{"", "", "fr_FR.UTF-8", "zh_CN.UTF-8"}, {"fr_FR", "fr", "en"}},
        {{"", "de_DE", "fr_FR", "zh_CN"}, {"de_DE", "de", "en"}},
        {{"fr:zh_CN", "", "", "de_DE.UTF-8"}, {"fr", "zh_CN", "zh", "en"}},
        {{"zh_TW::C:fr", "", "", "de_DE.UTF-8"}, {"zh_TW", "zh", "en"}},
        {{"sr_RS.UTF-8@latin", "", "", "sr_RS.UTF-8"},
         {"sr_RS@latin", "sr@latin", "sr_RS", "sr", "en"}},
        {{"../../etc:zh/x", "", "", "de_DE"}, {"en"}},
        {{"", "", "", "../secret"}, {"en"}}};
    for (const auto& [env, expected] : cases)
        EXPECT_EQ(catalogueLanguages({env[0], env[1], env[2], env[3]}), expected)
            << env[0] << "|" << env[1] << "|" << env[2] << "|" << env[3];
}

// Runs with a clean locale environment and no loaded catalogues.
class LocalizationTest : public ::testing::Test {
  protected:
    void SetUp() override { resetLocalizationForTesting(); }
    void TearDown() override { resetLocalizationForTesting(); }

    static std::string catalogueText(const std::string& language, const std::string& key) {
        return test::readPoFile(test::sourceCatalogue(language)).at(key);
    }
    // A catalogue folder from the environment, with the given .mo files.
    void useFolder(const std::vector<std::pair<std::string, std::string>>& catalogues) {
        for (const auto& [language, bytes] : catalogues)
            m_custom.write(language + "/LC_MESSAGES/pxmenu.mo", bytes);
        m_folder.emplace("PXMENU_LOCALEDIR", m_custom.path());
    }

    ScopedEnv m_language{"LANGUAGE", std::nullopt};
    ScopedEnv m_lcAll{"LC_ALL", std::nullopt};
    ScopedEnv m_lcMessages{"LC_MESSAGES", std::nullopt};
    ScopedEnv m_lang{"LANG", std::nullopt};
    TempDir m_custom;
    std::optional<ScopedEnv> m_folder{std::in_place, "PXMENU_LOCALEDIR", std::nullopt};
};

TEST_F(LocalizationTest, EveryCatalogueEntryIsFoundInItsLanguageAndOthersFallBack) {
    for (const auto& [language, locale] : {std::pair{"en", "C"}, {"zh_CN", "zh_CN.UTF-8"}}) {
        ScopedEnv lang("LANG", locale);
        for (const auto& [key, text] : test::readPoFile(test::sourceCatalogue(language)))
            EXPECT_EQ(localized(key), text) << language << ": " << key;
        resetLocalizationForTesting();
    }
    EXPECT_NE(localized("Delete Tip"), "Delete Tip") << "unset locale: the English sentences";
    EXPECT_EQ(localized("Open With") + "Emacs", "Open With Emacs");
    ScopedEnv lang("LANG", "xx_YY.UTF-8");
    EXPECT_EQ(localized("Warn"), catalogueText("en", "Warn"));
    EXPECT_EQ(localized("No Such Key Anywhere"), "No Such Key Anywhere");
    EXPECT_EQ(localized(""), "");
}

TEST_F(LocalizationTest, CatalogueFolderFromTheEnvironmentComesFirstAndDamageIsPassedOver) {
    useFolder({{"zh_CN", test::buildMoCatalogue({{"", test::kUtf8Header}, {"Paste", "贴上"}})},
               {"xx", std::string(3, '\0')}});
    ScopedEnv lang("LANG", "zh_CN.UTF-8");
    EXPECT_EQ(localized("Paste"), "贴上");
    EXPECT_EQ(localized("Cut"), "Cut") << "the chosen catalogue has no entry: the key";
    const std::string halfWritten = test::buildMoCatalogue({{"Paste", "half"}, {"Cut", "cut"}});
    useFolder({{"zh_CN", halfWritten.substr(0, halfWritten.size() - 4)}});
    resetLocalizationForTesting();
    EXPECT_EQ(localized("Paste"), catalogueText("zh_CN", "Paste"));
    ScopedEnv other("LANG", "xx");
    resetLocalizationForTesting();
    EXPECT_EQ(localized("Warn"), catalogueText("en", "Warn"));
}

TEST_F(LocalizationTest, CatalogueIsLoadedOnceUntilResetAndReadSafelyFromThreads) {
    useFolder({{"xx", test::buildMoCatalogue({{"Paste", "first"}})}});
    ScopedEnv lang("LANG", "xx");
    EXPECT_EQ(localized("Paste"), "first");
    m_custom.write("xx/LC_MESSAGES/pxmenu.mo", test::buildMoCatalogue({{"Paste", "second"}}));
    EXPECT_EQ(localized("Paste"), "first");
    resetLocalizationForTesting();
    std::vector<std::thread> threads;
    std::atomic<int> mismatches = 0;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i)
                if (localized("Paste") != "second") ++mismatches;
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(mismatches, 0);
}

TEST(LocalizedTextFormatTest, PlaceholdersFillInOrderAndFaultyOnesStayAsText) {
    const std::vector<std::string> args{"a", "7", "b"};
    EXPECT_EQ(formatLocalizedText("%@-%d%@", args), "a-7b");
    EXPECT_EQ(
        formatLocalizedText("“%@” exists", std::vector<std::string>{"a \"b\" $(x) {} %@.txt"}),
        "“a \"b\" $(x) {} %@.txt” exists");
    EXPECT_EQ(formatLocalizedText("%ld and %lld, %i %u %s", args), "a and 7, b %u %s");
    EXPECT_EQ(formatLocalizedText("%2$d then %1$@ then %@", args), "7 then a then a");
    EXPECT_EQ(formatLocalizedText("100%% of %@", args), "100% of a");
    const std::vector<std::string> one{"x"};
    EXPECT_EQ(formatLocalizedText("%@ %@ %9$@ %0$@", one), "x %@ %9$@ %0$@");
    EXPECT_EQ(formatLocalizedText("{} {0} %.1f %x %", one), "{} {0} %.1f %x %");
}

// The placeholders of a text in order, "%%" left out.
Names placeholdersOf(const std::string& text) {
    static const std::regex placeholder(R"(%(?:[0-9]+\$)?(?:ll|l|z|q)?[@dius])");
    Names found;
    for (std::sregex_iterator it(text.begin(), text.end(), placeholder), end; it != end; ++it)
        found.push_back(it->str());
    return found;
}

TEST(CatalogueFilesTest, BothLanguagesCoverTheSameKeysWithTheSamePlaceholders) {
    const auto english = test::readPoFile(test::sourceCatalogue("en"));
    const auto chinese = test::readPoFile(test::sourceCatalogue("zh_CN"));
    EXPECT_GT(english.size(), 80u);
    EXPECT_EQ(english.size(), chinese.size());
    for (const auto& [key, text] : english) {
        ASSERT_TRUE(chinese.count(key)) << "missing in zh_CN: " << key;
        EXPECT_FALSE(text.empty() || chinese.at(key).empty()) << key;
        EXPECT_EQ(placeholdersOf(text), placeholdersOf(chinese.at(key))) << key;
        if (!placeholdersOf(key).empty()) {
            EXPECT_EQ(placeholdersOf(key), placeholdersOf(text)) << key;
        }
    }
    for (const char* ext : {"txt", "docx", "xlsx", "pages", "md", "wps", "html", "py", "sh"})
        EXPECT_FALSE(chinese.count(ext)) << ext << " must never be translated";
}

} // namespace
} // namespace px
