#include "config/Localization.h"

#include "config/LanguageChoice.h"
#include "config/MoBuilder.h"
#include "config/PoFile.h"
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

Names languagesFor(std::string language, std::string lcAll, std::string lcMessages,
                   std::string lang) {
    return catalogueLanguages(
        {std::move(language), std::move(lcAll), std::move(lcMessages), std::move(lang)});
}

TEST(LanguageChoiceTest, PortableOrUnsetLocaleMeansEnglishEvenWithLanguageList) {
    EXPECT_EQ(languagesFor("", "", "", ""), Names{"en"});
    EXPECT_EQ(languagesFor("zh_CN", "", "", ""), Names{"en"});
    EXPECT_EQ(languagesFor("zh_CN", "C", "", "zh_CN.UTF-8"), Names{"en"});
    EXPECT_EQ(languagesFor("", "", "", "C.UTF-8"), Names{"en"});
    EXPECT_EQ(languagesFor("", "", "POSIX", "zh_CN.UTF-8"), Names{"en"});
}

TEST(LanguageChoiceTest, LocaleVariablesInGettextOrder) {
    EXPECT_EQ(languagesFor("", "", "", "zh_CN.UTF-8"), (Names{"zh_CN", "zh", "en"}));
    EXPECT_EQ(languagesFor("", "", "fr_FR.UTF-8", "zh_CN.UTF-8"), (Names{"fr_FR", "fr", "en"}));
    EXPECT_EQ(languagesFor("", "de_DE", "fr_FR", "zh_CN"), (Names{"de_DE", "de", "en"}));
    EXPECT_EQ(languagesFor("", "en_GB.UTF-8", "", ""), (Names{"en_GB", "en"}));
}

TEST(LanguageChoiceTest, LanguageListReplacesTheLocaleUntilACEntry) {
    EXPECT_EQ(languagesFor("fr:zh_CN", "", "", "de_DE.UTF-8"), (Names{"fr", "zh_CN", "zh", "en"}));
    EXPECT_EQ(languagesFor("zh_TW::C:fr", "", "", "de_DE.UTF-8"), (Names{"zh_TW", "zh", "en"}));
    EXPECT_EQ(languagesFor("sr_RS.UTF-8@latin", "", "", "sr_RS.UTF-8"),
              (Names{"sr_RS@latin", "sr@latin", "sr_RS", "sr", "en"}));
}

TEST(LanguageChoiceTest, NamesThatCouldLeaveTheCatalogueFolderAreDropped) {
    EXPECT_EQ(languagesFor("../../etc:zh/x", "", "", "de_DE"), Names{"en"});
    EXPECT_EQ(languagesFor("", "", "", "../secret"), Names{"en"});
}

// Runs with a clean locale environment and no loaded catalogues.
class LocalizationTest : public ::testing::Test {
  protected:
    void SetUp() override { resetLocalizationForTesting(); }
    void TearDown() override { resetLocalizationForTesting(); }

    std::string catalogueText(const std::string& language, const std::string& key) const {
        return test::readPoFile(test::sourceCatalogue(language)).at(key);
    }

    ScopedEnv m_language{"LANGUAGE", std::nullopt};
    ScopedEnv m_lcAll{"LC_ALL", std::nullopt};
    ScopedEnv m_lcMessages{"LC_MESSAGES", std::nullopt};
    ScopedEnv m_lang{"LANG", std::nullopt};
    ScopedEnv m_folder{"PXMENU_LOCALEDIR", std::nullopt};
};

TEST_F(LocalizationTest, EnglishCatalogueAppliesUnderTheCLocaleAndWhenUnset) {
    const std::string sentence = catalogueText("en", "Delete Tip");
    ASSERT_NE(sentence, "Delete Tip");
    EXPECT_EQ(localized("Delete Tip"), sentence);
    ScopedEnv c("LC_ALL", "C");
    EXPECT_EQ(localized("Delete Tip"), sentence);
    EXPECT_EQ(localized("Paste"), "Paste");
}

TEST_F(LocalizationTest, EveryCatalogueEntryIsFoundInItsLanguage) {
    for (const auto& [language, locale] : {std::pair{"en", "C"}, {"zh_CN", "zh_CN.UTF-8"}}) {
        ScopedEnv lang("LANG", locale);
        for (const auto& [key, text] : test::readPoFile(test::sourceCatalogue(language)))
            EXPECT_EQ(localized(key), text) << language << ": " << key;
    }
}

TEST_F(LocalizationTest, ChineseLocaleUsesTheChineseCatalogue) {
    ScopedEnv lang("LANG", "zh_CN.UTF-8");
    EXPECT_EQ(localized("Paste"), catalogueText("zh_CN", "Paste"));
    EXPECT_NE(localized("Paste"), "Paste");
    ScopedEnv language("LANGUAGE", "fr:zh");
    EXPECT_EQ(localized("Paste"), "Paste") << "no fr or zh catalogue: English";
}

TEST_F(LocalizationTest, LanguageListIsIgnoredUnderTheCLocale) {
    ScopedEnv language("LANGUAGE", "zh_CN");
    ScopedEnv all("LC_ALL", "C");
    EXPECT_EQ(localized("Warn"), catalogueText("en", "Warn"));
}

TEST_F(LocalizationTest, UnknownLanguageAndUnknownKeyFallBack) {
    ScopedEnv lang("LANG", "xx_YY.UTF-8");
    EXPECT_EQ(localized("Warn"), catalogueText("en", "Warn"));
    EXPECT_EQ(localized("No Such Key Anywhere"), "No Such Key Anywhere");
    EXPECT_EQ(localized("txt"), "txt");
    EXPECT_EQ(localized(""), "");
}

TEST_F(LocalizationTest, OpenWithReadsAsSeparateWordsBeforeAnApplicationName) {
    EXPECT_EQ(localized("Open With") + "Emacs", "Open With Emacs");
    ScopedEnv lang("LANG", "zh_CN.UTF-8");
    EXPECT_EQ(localized("Open With"), catalogueText("zh_CN", "Open With"));
    EXPECT_NE(localized("Open With"), "Open With");
}

TEST_F(LocalizationTest, CatalogueFolderFromTheEnvironmentComesFirst) {
    TempDir folder;
    folder.write("zh_CN/LC_MESSAGES/pxmenu.mo",
                 test::buildMoCatalogue({{"", test::kUtf8Header}, {"Paste", "贴上"}}));
    ScopedEnv custom("PXMENU_LOCALEDIR", folder.path());
    ScopedEnv lang("LANG", "zh_CN.UTF-8");
    EXPECT_EQ(localized("Paste"), "贴上");
    EXPECT_EQ(localized("Cut"), "Cut") << "the chosen catalogue has no entry: the key";
}

TEST_F(LocalizationTest, DamagedCatalogueIsPassedOverForTheNextOne) {
    TempDir folder;
    const std::string halfWritten = test::buildMoCatalogue({{"Paste", "half"}, {"Cut", "written"}});
    folder.write("zh_CN/LC_MESSAGES/pxmenu.mo", halfWritten.substr(0, halfWritten.size() - 4));
    folder.write("xx/LC_MESSAGES/pxmenu.mo", std::string(3, '\0'));
    ScopedEnv custom("PXMENU_LOCALEDIR", folder.path());
    ScopedEnv lang("LANG", "zh_CN.UTF-8");
    EXPECT_EQ(localized("Paste"), catalogueText("zh_CN", "Paste"));
    ScopedEnv other("LANG", "xx");
    EXPECT_EQ(localized("Warn"), catalogueText("en", "Warn"));
}

TEST_F(LocalizationTest, CatalogueIsLoadedOnceUntilReset) {
    TempDir folder;
    const auto path =
        folder.write("xx/LC_MESSAGES/pxmenu.mo", test::buildMoCatalogue({{"Paste", "first"}}));
    ScopedEnv custom("PXMENU_LOCALEDIR", folder.path());
    ScopedEnv lang("LANG", "xx");
    EXPECT_EQ(localized("Paste"), "first");
    folder.write("xx/LC_MESSAGES/pxmenu.mo", test::buildMoCatalogue({{"Paste", "second"}}));
    EXPECT_EQ(localized("Paste"), "first");
    resetLocalizationForTesting();
    EXPECT_EQ(localized("Paste"), "second");
}

TEST_F(LocalizationTest, ConcurrentLookupsAgree) {
    ScopedEnv lang("LANG", "zh_CN.UTF-8");
    const std::string expected = catalogueText("zh_CN", "Delete Tip");
    std::vector<std::thread> threads;
    std::atomic<int> mismatches = 0;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i)
                if (localized("Delete Tip") != expected) ++mismatches;
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(mismatches, 0);
}

TEST(LocalizedTextFormatTest, PlaceholdersTakeArgumentsInOrderOrByPosition) {
    const std::vector<std::string> args{"a", "7", "b"};
    EXPECT_EQ(formatLocalizedText("%@-%d%@", args), "a-7b");
    EXPECT_EQ(formatLocalizedText("%ld and %lld, %i %u %s", args), "a and 7, b %u %s");
    EXPECT_EQ(formatLocalizedText("%2$d then %1$@ then %@", args), "7 then a then a");
    EXPECT_EQ(formatLocalizedText("100%% of %@", args), "100% of a");
}

TEST(LocalizedTextFormatTest, FaultyTranslationsCannotFailOrReadPastTheArguments) {
    const std::vector<std::string> one{"x"};
    EXPECT_EQ(formatLocalizedText("%@ %@ %9$@ %0$@", one), "x %@ %9$@ %0$@");
    EXPECT_EQ(formatLocalizedText("{} {0} %", one), "{} {0} %");
    EXPECT_EQ(formatLocalizedText("%.1f %x %", one), "%.1f %x %");
    EXPECT_EQ(formatLocalizedText("%@", {}), "%@");
}

TEST_F(LocalizationTest, LocalizedFormatFillsTheCatalogueText) {
    ScopedEnv lang("LANG", "zh_CN.UTF-8");
    const std::string name = "a \"b\" $(reboot) {}.txt";
    const std::string text = localizedFormat("Same FileName Tip", name);
    EXPECT_NE(text.find(name), std::string::npos) << text;
    EXPECT_EQ(text.find("%@"), std::string::npos);
    ScopedEnv c("LANG", "C");
    EXPECT_NE(localizedFormat("Convert Icns image invalid", 600, 400).find("600 × 400"),
              std::string::npos);
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
    for (const auto& [key, text] : english) {
        ASSERT_TRUE(chinese.count(key)) << "missing in zh_CN: " << key;
        EXPECT_FALSE(text.empty()) << key;
        EXPECT_FALSE(chinese.at(key).empty()) << key;
        EXPECT_EQ(placeholdersOf(text), placeholdersOf(chinese.at(key))) << key;
        if (!placeholdersOf(key).empty()) {
            EXPECT_EQ(placeholdersOf(key), placeholdersOf(text)) << key;
        }
    }
    for (const auto& entry : chinese)
        EXPECT_TRUE(english.count(entry.first)) << "missing in en: " << entry.first;
}

TEST(CatalogueFilesTest, TemplateExtensionsAreNeverTranslated) {
    const auto chinese = test::readPoFile(test::sourceCatalogue("zh_CN"));
    for (const char* ext : {"txt", "rtf", "json", "docx", "xlsx", "pptx", "pages", "numbers", "key",
                            "md", "wps", "et", "dps", "html", "xml", "css", "js", "py", "sh"})
        EXPECT_FALSE(chinese.count(ext)) << ext;
}

} // namespace
} // namespace px
