#pragma once

#include "support_files/TestSupport.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace px::test {

// Runs the pxmenu binary with HOME and XDG_* pointed at a fresh temporary folder.
class CliFixture : public ::testing::Test {
  protected:
    ProcessResult pxmenu(std::vector<std::string> args, const std::string& input = {}) {
        args.insert(args.begin(), PXMENU_BINARY);
        return runProcess(args, input);
    }
    nlohmann::json menuJson(std::vector<std::string> args) {
        args.insert(args.begin(), {"menu", "--json"});
        auto result = pxmenu(args);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return nlohmann::json::parse(result.out);
    }
    static std::vector<std::string> keys(const nlohmann::json& menu) {
        std::vector<std::string> result;
        for (const auto& entry : menu)
            result.push_back(entry.at("key").get<std::string>());
        return result;
    }
    static const nlohmann::json* entry(const nlohmann::json& menu, const std::string& key) {
        for (const auto& item : menu)
            if (item.at("key") == key) return &item;
        return nullptr;
    }
    // Transcript lines of a scripted run, parsed.
    static std::vector<nlohmann::json> transcript(const std::string& out) {
        std::vector<nlohmann::json> lines;
        std::size_t start = 0;
        for (std::size_t end; (end = out.find('\n', start)) != std::string::npos; start = end + 1)
            if (end > start) lines.push_back(nlohmann::json::parse(out.substr(start, end - start)));
        return lines;
    }

    using Strings = std::vector<std::string>;

    // The factory menus, the review prompt off and the entries with `keys` switched on.
    void setUpMenus(const Strings& keys = {}) {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
        for (const auto& key : keys)
            ASSERT_EQ(pxmenu({"config", "set", "right", key, "disabled", "false"}).exitStatus, 0);
    }
    // The arguments of a request: the menu kind, the folder shown and the selection.
    static Strings request(int kind, const std::string& target, const Strings& paths = {}) {
        Strings args{"--kind", std::to_string(kind), "--target", target, "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        return args;
    }
    // The tag of the entry reached through the key path in the menu for the request; -1 when the
    // menu does not offer it.
    int tagAt(const Strings& keyPath, const Strings& args) {
        nlohmann::json level = menuJson(args);
        int tag = -1;
        for (const auto& key : keyPath) {
            const nlohmann::json* found = entry(level, key);
            if (!found) return -1;
            tag = found->at("tag").get<int>();
            nlohmann::json children = found->value("children", nlohmann::json::array());
            level = std::move(children);
        }
        return tag;
    }
    // `pxmenu run` of the tag for the request, the prompts answered from the lines.
    ProcessResult runTag(int tag, const Strings& args, const std::string& answers = {}) {
        const std::string script =
            answerFiles.write("answers-" + std::to_string(++m_scripts), answers);
        Strings all{"run", "--tag", std::to_string(tag), "--ui", "script:" + script};
        all.insert(all.end(), args.begin(), args.end());
        if (runFolder.empty()) return pxmenu(all);
        all.insert(all.begin(), {"/usr/bin/env", "-C", runFolder, PXMENU_BINARY});
        return runProcess(all);
    }
    ProcessResult runEntry(const Strings& keyPath, const Strings& args,
                           const std::string& answers = {}) {
        const int tag = tagAt(keyPath, args);
        if (tag < 0) return {-1, "", keyPath.back() + " is not offered"};
        return runTag(tag, args, answers);
    }
    // The transcript lines that carry the key.
    static std::vector<nlohmann::json> withKey(const std::string& out, const std::string& key) {
        std::vector<nlohmann::json> found;
        for (auto& line : transcript(out))
            if (line.contains(key)) found.push_back(std::move(line));
        return found;
    }

    ScopedXdg xdg;
    TempDir work;
    TempDir answerFiles;   // outside the folders the commands work on
    std::string runFolder; // where `runTag` starts pxmenu, when not here

  private:
    int m_scripts = 0;
};

} // namespace px::test
