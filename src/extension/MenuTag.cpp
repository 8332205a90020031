#include "extension/MenuTag.h"

#include "extension/MenuEntry.h"

#include <cstdlib>
#include <fmt/format.h>

namespace px::menutag {

std::string topLevelText(std::int64_t tag) {
    return fmt::format("{:02d}", tag);
}

// Written out by hand: a menu makes one for every entry of every submenu.
std::string childText(const std::string& parentText, std::size_t index) {
    std::string text = parentText;
    if (index + 1 < 10) text.push_back('0');
    text += std::to_string(index + 1);
    return text;
}

std::int64_t toTag(const std::string& text) {
    return std::strtoll(text.c_str(), nullptr, 10);
}

std::vector<std::string> pieces(std::int64_t tag) {
    std::string text = fmt::format("{}", tag);
    if (text.size() % 2 == 1) text = "0" + text;
    std::vector<std::string> result;
    for (std::size_t i = 0; i < text.size(); i += 2)
        result.push_back(text.substr(i, 2));
    return result;
}

int pieceValue(const std::string& piece) {
    return std::atoi(piece.c_str());
}

} // namespace px::menutag

namespace px {

const MenuEntry* findEntryWithTag(const Menu& menu, std::int64_t tag) {
    for (const auto& entry : menu) {
        if (!entry.separator && entry.tag == tag) return &entry;
        if (const MenuEntry* found = findEntryWithTag(entry.children, tag)) return found;
    }
    return nullptr;
}

namespace {

bool collectKeyPath(const Menu& menu, std::int64_t tag, std::vector<std::string>& path) {
    for (const auto& entry : menu) {
        path.push_back(entry.key);
        if (!entry.separator && entry.tag == tag) return true;
        if (collectKeyPath(entry.children, tag, path)) return true;
        path.pop_back();
    }
    return false;
}

} // namespace

std::vector<std::string> keyPathOfTag(const Menu& menu, std::int64_t tag) {
    std::vector<std::string> path;
    if (!collectKeyPath(menu, tag, path)) path.clear();
    return path;
}

} // namespace px
