// Builds menus for random configurations, selections, menu kinds and preferences, then decodes
// every tag of the built menu, some again in requests of their own that name the entry's key
// path, and random tags as well. The actions only record that they were reached: what is fuzzed
// is the builder and the decoding, not the file work behind them.
#include "ScratchHome.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "config/PXURLCache.h"
#include "extension/Dispatch.h"
#include "extension/FinderSync.h"
#include "extension/MenuBuilder.h"
#include "extension/Request.h"
#include "platform/MemorySettings.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"
#include "support/Queues.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <fuzzer/FuzzedDataProvider.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using px::plist::Value;

// Keys of real items of every list, of generated children, and a few that are no item at all.
const std::vector<std::string> kItemKeys{"New File",
                                         "Common Path",
                                         "Common App",
                                         "Folder Icon",
                                         "Execute Script",
                                         "Copy to",
                                         "Move to",
                                         "Convert to",
                                         "Cut Paste",
                                         "Lock and Unlock",
                                         "Encrypted Compression",
                                         "Embed in Folder",
                                         "Unembed Folder",
                                         "Color Picker",
                                         "Extract Icon",
                                         "File Info",
                                         "Terminal Window",
                                         "Terminal Tab",
                                         "Terminal To",
                                         "iTerm2 Window",
                                         "iTerm2 Tab",
                                         "iTerm2 To",
                                         "Copy Path",
                                         "Delete",
                                         "Hide Selected Files",
                                         "Hide All Files",
                                         "Unhide All Files",
                                         "System Hide Files",
                                         "New File From Window",
                                         "Add to File Template",
                                         "Sep Line",
                                         "Go Set",
                                         "To Authorize",
                                         "Select Folder",
                                         "Current Directory",
                                         "Show in Finder",
                                         "More Files",
                                         "Recover Icon",
                                         "MD5",
                                         "PNG",
                                         "PDF",
                                         "txt",
                                         "docx",
                                         "md",
                                         "sh",
                                         "WeChat",
                                         "Visual Studio Code",
                                         "Emacs",
                                         "love",
                                         "star",
                                         "",
                                         " ",
                                         "(null)",
                                         "use count",
                                         "is reviewed",
                                         "array right menu",
                                         "pref check2"};

const std::vector<std::string> kFieldNames{"key",
                                           "icon",
                                           "iconPath",
                                           "appName",
                                           "displayName",
                                           "toMainMenu",
                                           "disabledAuth",
                                           "disabledOpenPath",
                                           "mainMenuNewFile",
                                           "ext",
                                           "fileName",
                                           "templatePath",
                                           "special",
                                           "disabled",
                                           "cutPaths",
                                           "path",
                                           "is changed version"};

const std::vector<std::string> kMenuKeys{px::menukey::kRightMenu, px::menukey::kNewFile,
                                         px::menukey::kFolderIcon, px::menukey::kCommonApp,
                                         px::menukey::kCommonPath};

const std::vector<std::string> kExtensions{"png",  "PNG",  "jpg", "txt", "sh",     "scpt", "pdf",
                                           "icns", "docx", "gz",  "",    "tar.gz", "jp2",  "svg"};

// Commands that count their calls and read their arguments instead of acting.
class RecordingActions final : public px::MenuActions {
  public:
    explicit RecordingActions(const px::Request& request) : m_request(request) {}
    std::size_t calls = 0;

    void createFile(const px::PXMenuItem& item) override { note(&item); }
    void openCommonPath(const std::string& path, const px::PXMenuItem* entry) override {
        note(entry, path);
    }
    void openWithApp(const px::PXMenuItem& item) override { note(&item); }
    void setFolderIcon(const px::PXMenuItem& item) override { note(&item); }
    void convert(const px::PXMenuItem& target, std::size_t index,
                 const px::PXMenuItem& parent) override {
        // The index names the target among the parent's children.
        if (!parent.children || index >= parent.children->size() ||
            (*parent.children)[index].get() != &target)
            __builtin_trap();
        note(&target, parent.key);
    }
    void copyFileInfo(const px::PXMenuItem& digest, std::size_t index) override {
        note(&digest);
        calls += index;
    }
    void moveOrCopy(const px::PXMenuItem& destination, bool isCopy) override {
        note(&destination);
        calls += isCopy ? 1 : 0;
    }
    void openService(const std::string& serve, const std::optional<std::string>& path) override {
        note(nullptr, serve + path.value_or(""));
    }
    void deleteItems() override { note(nullptr, firstSelected()); }
    void copyPath() override { note(nullptr, firstSelected()); }
    void showSystemFiles(const px::PXMenuItem& item) override { note(&item); }
    void changeVisibility(px::Visibility visibility) override {
        note(nullptr, firstSelected());
        calls += static_cast<std::size_t>(visibility);
    }
    void lockUnlock() override { note(nullptr, firstSelected()); }
    void cutPaste(const px::PXMenuItem& item) override {
        note(&item);
        calls += item.cutPaths.size();
    }
    void compress() override { note(nullptr, firstSelected()); }
    void embedFolder() override { note(nullptr, m_request.target()); }
    void unembedFolder() override { note(nullptr, m_request.target()); }
    void pickColor() override { note(nullptr); }
    void executeScript() override { note(nullptr, firstSelected()); }
    void extractIcon() override { note(nullptr, firstSelected()); }
    void openSettings() override { note(nullptr); }
    void offerReview() override { note(nullptr); }

  private:
    std::string firstSelected() const {
        return m_request.selection().empty() ? "" : m_request.selection().front();
    }
    void note(const px::PXMenuItem* item, const std::string& text = {}) {
        calls += text.size();
        if (item) calls += item->key.size() + item->path.size() + item->appName.size();
        ++calls;
    }

    const px::Request& m_request;
};

// The files and folders every input chooses its selection, target and common paths from.
struct World {
    px::fuzz::ScratchHome home;
    std::string data = home.folder("data");
    std::string tree = home.folder("tree");
    std::string scratch = home.folder("scratch");
    std::vector<std::string> paths;
    std::vector<std::string> folders;

    World() {
        std::string many = home.folder("tree/many");
        for (int i = 0; i < 24; ++i)
            home.folder("tree/many/sub" + std::to_string(i));
        for (int i = 0; i < 12; ++i)
            touch(many + "/file" + std::to_string(i) + ".txt");
        std::string few = home.folder("tree/few");
        home.folder("tree/few/only");
        touch(few + "/.hidden");
        touch(few + "/a.png");
        folders = {many, few, home.folder("tree/empty"), tree, "/", tree + "/missing"};
        for (const char* name : {"a.png", "b.txt", "c.sh", "d.scpt", "e.pdf", "noext", "g h.JPG",
                                 "q\"$(x).png", ".dot.png"})
            paths.push_back(touch(tree + "/" + name));
        ::symlink((tree + "/many").c_str(), (tree + "/link").c_str());
        ::symlink((tree + "/nowhere").c_str(), (tree + "/dangling.png").c_str());
        paths.insert(paths.end(), folders.begin(), folders.end());
        paths.insert(paths.end(), {tree + "/link", tree + "/dangling.png", tree + "/missing.png",
                                   tree + "/many/../b.txt", tree + "//few/", "relative/x.png", "",
                                   " ", "~", std::string(300, 'x') + ".png"});
        px::queue::markMainThread();
    }

    static std::string touch(const std::string& path) {
        std::ofstream(path) << "x";
        return path;
    }
};

World& world() {
    static World instance;
    return instance;
}

template <typename T> const T& pick(FuzzedDataProvider& in, const std::vector<T>& from) {
    return from[in.ConsumeIntegralInRange<std::size_t>(0, from.size() - 1)];
}

std::string someString(FuzzedDataProvider& in) {
    switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return pick(in, world().paths);
    case 1:
        return pick(in, kItemKeys);
    case 2:
        return pick(in, kExtensions);
    default:
        return in.ConsumeRandomLengthString(40);
    }
}

Value pathList(FuzzedDataProvider& in) {
    px::plist::Array items;
    for (int n = in.ConsumeIntegralInRange(0, 3); n > 0; --n)
        items.push_back(in.ConsumeBool() ? Value(pick(in, world().paths))
                                         : Value(in.ConsumeIntegral<int>()));
    return Value::makeArray(std::move(items));
}

Value anyValue(FuzzedDataProvider& in, int depth) {
    switch (in.ConsumeIntegralInRange(0, 7)) {
    case 0:
        return Value(in.ConsumeBool());
    case 1:
        return Value(in.ConsumeIntegral<std::int64_t>());
    case 2:
        return Value(in.ConsumeFloatingPoint<double>());
    case 3:
        return pathList(in);
    case 4:
        if (depth < 2) return Value::makeDictionary({{someString(in), anyValue(in, depth + 1)}});
        return Value::null();
    case 5:
        return Value::makeData({0x2f, 0x74, 0x6d, 0x70});
    default:
        return Value(someString(in));
    }
}

// A value of the type the field normally holds, now and then something else.
Value fieldValue(FuzzedDataProvider& in, const std::string& field) {
    if (in.ConsumeIntegralInRange(0, 7) == 0) return anyValue(in, 0);
    if (field == "cutPaths") return pathList(in);
    if (field == "path") return Value(pick(in, world().paths));
    if (field == "is changed version")
        return Value(in.PickValueInArray({"2.0.1", "2.6.0", "9.9", "delete", "", "x.y"}));
    static const std::vector<std::string> flags{
        "toMainMenu", "disabledAuth", "disabledOpenPath", "mainMenuNewFile", "special", "disabled"};
    for (const auto& flag : flags)
        if (field == flag) return Value(in.ConsumeBool());
    return Value(someString(in));
}

Value itemDictionary(FuzzedDataProvider& in) {
    px::plist::Dictionary fields;
    if (in.ConsumeIntegralInRange(0, 9) != 0) fields.emplace("key", Value(pick(in, kItemKeys)));
    for (int n = in.ConsumeIntegralInRange(0, 5); n > 0; --n) {
        const std::string& field = pick(in, kFieldNames);
        fields.insert_or_assign(field, fieldValue(in, field));
    }
    return Value::makeDictionary(std::move(fields));
}

Value itemList(FuzzedDataProvider& in) {
    px::plist::Array items;
    for (int n = in.ConsumeIntegralInRange(0, 10); n > 0; --n)
        items.push_back(in.ConsumeIntegralInRange(0, 15) == 0 ? anyValue(in, 0)
                                                              : itemDictionary(in));
    return Value::makeArray(std::move(items));
}

// Keeps, replaces, extends, breaks or drops each of the five lists.
void changeLists(FuzzedDataProvider& in, px::platform::Settings& suite) {
    for (const auto& menuKey : kMenuKeys) {
        switch (in.ConsumeIntegralInRange(0, 4)) {
        case 1:
            suite.setObject(menuKey, itemList(in));
            break;
        case 2: {
            Value list = suite.arrayForKey(menuKey);
            Value changed = list ? list.mutableCopy() : Value::makeMutableArray();
            auto& items = changed.mutableArray();
            items.insert(items.begin() +
                             static_cast<std::ptrdiff_t>(
                                 in.ConsumeIntegralInRange<std::size_t>(0, items.size())),
                         itemDictionary(in));
            suite.setObject(menuKey, changed);
            break;
        }
        case 3:
            suite.setObject(menuKey, anyValue(in, 0));
            break;
        case 4:
            suite.removeObject(menuKey);
            break;
        default:
            break;
        }
    }
}

void addCommonPaths(FuzzedDataProvider& in, px::platform::Settings& suite) {
    px::plist::Array items;
    for (int n = in.ConsumeIntegralInRange(0, 3); n > 0; --n) {
        px::plist::Dictionary entry{{"path", Value(pick(in, world().folders))}};
        if (in.ConsumeBool()) entry.emplace("toMainMenu", Value(in.ConsumeBool()));
        if (in.ConsumeBool()) entry.emplace("displayName", Value(someString(in)));
        items.push_back(Value::makeDictionary(std::move(entry)));
    }
    suite.setObject(px::menukey::kCommonPath, Value::makeArray(std::move(items)));
}

void setPreferences(FuzzedDataProvider& in, px::platform::Settings& suite) {
    for (const char* key : {"pref check1", "pref check2", "pref check3", "pref check4"})
        suite.setBool(key, in.ConsumeBool());
    suite.setInteger(px::menukey::kCommonPathNextMenu, in.ConsumeIntegralInRange(0, 5));
    // Children switched off by name.
    for (int n = in.ConsumeIntegralInRange(0, 2); n > 0; --n)
        suite.setBool(pick(in, kItemKeys), true);
    suite.setInteger("use count", in.ConsumeIntegralInRange(0, 100));
    suite.setBool("is reviewed", true);
}

std::shared_ptr<px::PXMenuManager> makeStore(FuzzedDataProvider& in) {
    auto store = std::make_shared<px::PXMenuManager>(
        std::make_shared<px::platform::MemorySettings>(), world().data);
    if (in.ConsumeBool()) px::PXDefaultData(*store).setup();
    changeLists(in, store->sharedDefaults());
    if (in.ConsumeBool()) addCommonPaths(in, store->sharedDefaults());
    setPreferences(in, store->sharedDefaults());
    return store;
}

std::shared_ptr<px::platform::MemorySettings> makeStandardDefaults(FuzzedDataProvider& in) {
    auto defaults = std::make_shared<px::platform::MemorySettings>();
    if (in.ConsumeBool()) {
        px::plist::Dictionary grants;
        for (int n = in.ConsumeIntegralInRange(0, 2); n > 0; --n) {
            const std::string& path = pick(in, world().paths);
            grants.insert_or_assign(path, in.ConsumeBool()
                                              ? Value::makeData({path.begin(), path.end()})
                                              : anyValue(in, 1));
        }
        defaults->setObject(px::PXURLCache::cachedURLsKey,
                            Value::makeDictionary(std::move(grants)));
    }
    return defaults;
}

// Fresh files with random extensions, so the filters meet names nobody thought of.
std::vector<std::string> makeScratchFiles(FuzzedDataProvider& in) {
    std::error_code ignored;
    std::filesystem::remove_all(world().scratch, ignored);
    std::filesystem::create_directories(world().scratch, ignored);
    std::vector<std::string> made;
    for (int n = in.ConsumeIntegralInRange(0, 2); n > 0; --n) {
        std::string ext = in.ConsumeRandomLengthString(12);
        for (char& c : ext)
            if (c == '/' || c == '\0') c = '_';
        std::string path = world().scratch + "/f" + std::to_string(n) + "." + ext;
        if (in.ConsumeBool())
            std::filesystem::create_directory(path, ignored);
        else
            World::touch(path);
        made.push_back(path);
    }
    return made;
}

std::vector<std::string> makeSelection(FuzzedDataProvider& in) {
    std::vector<std::string> candidates = makeScratchFiles(in);
    candidates.insert(candidates.end(), world().paths.begin(), world().paths.end());
    std::vector<std::string> selection;
    for (int n = in.ConsumeIntegralInRange(0, 4); n > 0; --n)
        selection.push_back(pick(in, candidates));
    return selection;
}

void collectTags(const px::Menu& menu, std::vector<std::int64_t>& tags) {
    for (const auto& entry : menu) {
        if (!entry.separator) tags.push_back(entry.tag);
        collectTags(entry.children, tags);
    }
}

std::int64_t randomTag(FuzzedDataProvider& in) {
    if (in.ConsumeBool()) return in.ConsumeIntegral<std::int64_t>();
    std::int64_t tag = 0;
    for (int levels = in.ConsumeIntegralInRange(1, 4); levels > 0; --levels)
        tag = tag * 100 + in.ConsumeIntegralInRange(0, 99);
    return tag;
}

// One menu, opened and chosen from as a host does it.
class Session {
  public:
    Session(FuzzedDataProvider& in, std::shared_ptr<px::PXMenuManager> store)
        : m_in(in), m_store(std::move(store)), m_selection(makeSelection(in)),
          m_target(pick(in, world().paths)),
          m_services{
              std::make_shared<px::platform::FakeUi>(), nullptr, nullptr,
              std::make_shared<px::platform::StaticFinderSyncController>(m_selection, m_target),
              makeStandardDefaults(in)},
          m_kind(static_cast<px::MenuKind>(in.ConsumeIntegralInRange(0, 3))),
          m_offersReview(in.ConsumeBool()) {}

    // Every entry chosen from the menu just built, then a few chosen as a host does: a request
    // of their own naming the entry's key path (or a wrong one) and a menu built afresh.
    void run() {
        // The host as a file-manager session starts it (clearing the cut list) or as the command
        // line and the extension process do.
        px::FinderSync host(m_store, m_services, px::FinderSync::Options{m_in.ConsumeBool()});
        auto request = makeRequest({});
        px::BuiltMenu built = px::buildMenu(*request);
        std::vector<std::int64_t> tags;
        collectTags(built.entries, tags);
        RecordingActions actions(*request);
        for (std::int64_t tag : tags)
            if (px::dispatch(built, tag, *request, actions) == px::DispatchResult::TagNotFound)
                __builtin_trap(); // an entry shown that cannot be chosen
        for (std::size_t i = 0; i < tags.size() && i < 3; ++i) {
            std::int64_t tag = tags[m_in.ConsumeIntegralInRange<std::size_t>(0, tags.size() - 1)];
            choose(tag, m_in.ConsumeBool() ? px::keyPathOfTag(built.entries, tag)
                                           : std::vector<std::string>{someString(m_in)});
        }
        for (int n = m_in.ConsumeIntegralInRange(0, 4); n > 0; --n) {
            if (m_in.ConsumeBool())
                choose(randomTag(m_in), {});
            else
                px::dispatch(built, randomTag(m_in), *request, actions);
        }
        // Delayed commands (the review prompt) call the actions, which go now.
        px::queue::runUntilIdle();
    }

  private:
    std::unique_ptr<px::Request> makeRequest(std::vector<std::string> keyPath) const {
        return std::make_unique<px::Request>(px::Request::Options{m_selection, m_target, m_kind,
                                                                  std::move(keyPath), m_services,
                                                                  m_store, m_offersReview});
    }
    void choose(std::int64_t tag, std::vector<std::string> keyPath) {
        auto request = makeRequest(std::move(keyPath));
        RecordingActions actions(*request);
        px::dispatch(px::buildMenu(*request), tag, *request, actions);
        px::queue::runUntilIdle();
    }

    FuzzedDataProvider& m_in;
    std::shared_ptr<px::PXMenuManager> m_store;
    std::vector<std::string> m_selection;
    std::string m_target;
    px::platform::Platform m_services;
    px::MenuKind m_kind;
    bool m_offersReview;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    Session(in, makeStore(in)).run();
    return 0;
}
