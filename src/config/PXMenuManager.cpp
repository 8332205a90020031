#include "config/PXMenuManager.h"

#include "support/FileHash.h"

#include <cstdio>
#include <sys/stat.h>

namespace px {

namespace {

// The stored list under a menu key as a mutable copy; anything but an array counts as empty.
plist::Value mutableList(const plist::Value& stored) {
    return stored.isArray() ? stored.mutableCopy() : plist::Value::makeMutableArray();
}

bool matchesKeyOrPath(const plist::Value& entry, const std::string& itemKey) {
    plist::Value key = entry.get("key");
    if (key.isString() && key.string() == itemKey) return true;
    plist::Value path = entry.get("path");
    return path.isString() && path.string() == itemKey;
}

std::optional<std::size_t> indexOfKeyOrPath(const plist::Array& entries,
                                            const std::string& itemKey) {
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (matchesKeyOrPath(entries[i], itemKey)) return i;
    return std::nullopt;
}

void deleteFileOfField(const plist::Value& entry, std::string_view field) {
    plist::Value value = entry.get(field);
    if (value.isString() && filehash::isValid(value.string())) std::remove(value.string().c_str());
}

} // namespace

PXMenuManager::PXMenuManager(std::shared_ptr<platform::Settings> suite, std::string sharedFolder)
    : m_suite(std::move(suite)), m_sharedFolder(std::move(sharedFolder)) {}

// Applies a change to the stored list under the menu key as one read-modify-write.
void PXMenuManager::editList(const std::string& menuKey,
                             const std::function<void(plist::Array&)>& change) const {
    m_suite->modify(menuKey, [&](const plist::Value& stored) {
        plist::Value list = mutableList(stored);
        change(list.mutableArray());
        return list;
    });
}

std::string PXMenuManager::createFolderName(const std::string& name) const {
    std::string folder = m_sharedFolder + "/" + name;
    struct stat info {};
    if (::stat(folder.c_str(), &info) != 0) ::mkdir(folder.c_str(), 0755);
    return folder;
}

bool PXMenuManager::existKey(std::string_view key, const PXMenuItem::List& items) {
    for (const auto& item : items)
        if (item->key == key) return true;
    return false;
}

void PXMenuManager::addMenuKey(const std::string& menuKey, const plist::Value& dict,
                               bool toTop) const {
    editList(menuKey,
             [&](plist::Array& list) { list.insert(toTop ? list.begin() : list.end(), dict); });
}

void PXMenuManager::removeMenuKey(const std::string& menuKey, const std::string& itemKey) const {
    editList(menuKey, [&](plist::Array& list) {
        auto index = indexOfKeyOrPath(list, itemKey);
        if (!index) return;
        plist::Value match = list[*index];
        if (menuKey != "array right menu") {
            deleteFileOfField(match, "iconPath");
            deleteFileOfField(match, "templatePath");
        }
        std::erase(list, match);
    });
}

void PXMenuManager::updateMenuKey(const std::string& menuKey, const std::string& itemKey,
                                  const std::string& attrKey, const plist::Value& value) const {
    editList(menuKey, [&](plist::Array& list) {
        auto index = indexOfKeyOrPath(list, itemKey);
        if (!index) return;
        plist::Value entry = list[*index].isDictionary() ? list[*index].mutableCopy()
                                                         : plist::Value::makeMutableDictionary();
        if (value && !value.isNull())
            entry.set(attrKey, value);
        else
            entry.mutableDictionary().erase(attrKey);
        list[*index] = entry;
    });
}

void PXMenuManager::replaceMenuKey(const std::string& menuKey, const plist::Value& item) const {
    plist::Value key = item.get("key");
    editList(menuKey, [&](plist::Array& list) {
        for (auto& entry : list)
            if (key && entry.get("key") == key) {
                entry = item;
                return;
            }
    });
}

void PXMenuManager::changePositionMenuKey(const std::string& menuKey, std::size_t fromIndex,
                                          std::size_t toIndex) const {
    editList(menuKey, [&](plist::Array& list) {
        if (fromIndex >= list.size()) return;
        plist::Value entry = list[fromIndex];
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(fromIndex));
        std::size_t target = fromIndex < toIndex ? toIndex - 1 : toIndex;
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(target, list.size())),
                    entry);
    });
}

} // namespace px
