#pragma once

#include "support_files/TestSupport.h"

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

    ScopedXdg xdg;
    TempDir work;
};

} // namespace px::test
