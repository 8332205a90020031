// Every writer that publishes by rename, on a small file system filled to within a few KB: the
// failure is shown, nothing appears under the final name and no temporary is left behind.
#include "CliFixture.h"
#include "pdf/SamplePdf.h"

#include <cstring>
#include <fcntl.h>
#include <functional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace px::test;

namespace {

// A tmpfs mounted in this process's own mount namespace, which the programs it starts share;
// empty `whyNot` once mounted.
class SmallDisk {
  public:
    SmallDisk(const std::string& at, const char* size) : m_at(at) {
        static const std::string entered = enterOwnNamespace();
        if (!entered.empty()) {
            whyNot = entered;
            return;
        }
        const std::string options = std::string("size=") + size;
        if (::mount("tmpfs", at.c_str(), "tmpfs", 0, options.c_str()) != 0)
            whyNot = std::string("cannot mount a tmpfs: ") + std::strerror(errno);
    }
    ~SmallDisk() {
        if (whyNot.empty()) ::umount2(m_at.c_str(), MNT_DETACH);
    }
    // Fills the disk with one file until only `bytes` are free.
    void leaveFree(std::size_t bytes) const {
        struct statvfs info {};
        ASSERT_EQ(::statvfs(m_at.c_str(), &info), 0);
        const std::size_t available = info.f_bavail * info.f_frsize;
        ASSERT_GT(available, bytes);
        const int fd = ::open((m_at + "/filler").c_str(), O_WRONLY | O_CREAT, 0600);
        ASSERT_EQ(::posix_fallocate(fd, 0, static_cast<off_t>(available - bytes)), 0);
        ::close(fd);
    }
    std::string whyNot;

  private:
    static std::string enterOwnNamespace() {
        if (::unshare(CLONE_NEWNS) != 0)
            return std::string("no mount namespace of its own: ") + std::strerror(errno);
        if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            return std::string("cannot make the mounts private: ") + std::strerror(errno);
        return {};
    }
    std::string m_at;
};

class FullDiskTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"Convert to"}); }
    // Names in the folder other than the filler and what was put there before the run.
    // Files in the folder and below, other than the filler, lock files and what was put there
    // before the run.
    static Strings leftovers(const std::string& folder, const Strings& before) {
        Strings found;
        for (const auto& item : std::filesystem::recursive_directory_iterator(folder)) {
            const std::string name = item.path().lexically_relative(folder);
            if (!item.is_directory() && name != "filler" && !name.ends_with(".lock") &&
                std::find(before.begin(), before.end(), name) == before.end())
                found.push_back(name);
        }
        return found;
    }
    static bool reportsFailure(const ProcessResult& result) {
        for (const auto& line : withKey(result.out, "prompt"))
            if (line.at("prompt") == "alert") return true;
        return result.err.find("cannot") != std::string::npos;
    }
    std::string randomFile(const std::string& path, std::size_t size) {
        std::string bytes(size, '\0');
        std::uint32_t state = 2463534242u;
        for (char& c : bytes) {
            state ^= state << 13, state ^= state >> 17, state ^= state << 5;
            c = static_cast<char>(state);
        }
        return work.write(path, bytes);
    }
};

TEST_F(FullDiskTest, AWriteThatFailsPublishesNothingAndIsReported) {
    const std::string big = randomFile("big.bin", 200000);
    ASSERT_EQ(
        runProcess({"convert", "-size", "300x300", "xc:", "+noise", "Random", work / "noise.png"})
            .exitStatus,
        0);
    struct Case {
        const char* what;
        Strings inputs; // copied onto the disk before it is filled
        std::function<ProcessResult(const std::string& disk)> run;
        Strings published = {}; // complete files the run may leave
    };
    const std::vector<Case> cases{
        {"merging PDFs",
         {"a.pdf", "b.pdf"},
         [&](const std::string& disk) {
             return runEntry({"Convert to", "PDF"},
                             request(0, disk, {disk + "/a.pdf", disk + "/b.pdf"}), "button 1000\n");
         }},
        {"converting an image",
         {"noise.png"},
         [&](const std::string& disk) {
             return runEntry({"Convert to", "TIFF"}, request(0, disk, {disk + "/noise.png"}),
                             "button 1000\n");
         }},
        {"compressing",
         {},
         [&](const std::string& disk) {
             return runEntry({"Encrypted Compression"}, request(0, work.path(), {big}),
                             "save " + disk + "/big.zip\nbutton 1000\n");
         }},
        {"copying",
         {},
         [&](const std::string& disk) {
             return runEntry({"Copy to", "Select Folder"}, request(0, work.path(), {big}),
                             "open " + disk + "\nbutton 1000\n");
         }},
        {"saving the settings",
         {},
         [&](const std::string& disk) {
             ScopedEnv config("XDG_CONFIG_HOME", disk);
             return pxmenu({"setup"});
         },
         {"pxmenu/group.plist"}}, // the writes of setup that fitted
    };
    SamplePdfOptions heavy;
    heavy.extraLines = 200;
    heavy.shapes = 100;
    writeSamplePdf(work / "a.pdf", Strings(8, "first"), heavy);
    writeSamplePdf(work / "b.pdf", Strings(8, "second"), heavy);
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        const std::string disk = work.mkdir(std::string("disk-") + test.what[0] + test.what[1]);
        SmallDisk small(disk, "2m");
        if (!small.whyNot.empty()) GTEST_SKIP() << small.whyNot;
        for (const auto& input : test.inputs)
            std::filesystem::copy_file(work / input, disk + "/" + input);
        ASSERT_NO_FATAL_FAILURE(small.leaveFree(12 * 1024));
        const ProcessResult result = test.run(disk);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_TRUE(reportsFailure(result)) << result.out << result.err;
        Strings before = test.inputs;
        before.insert(before.end(), test.published.begin(), test.published.end());
        EXPECT_EQ(leftovers(disk, before), Strings{}) << result.out << result.err;
        for (const auto& name : test.published) {
            if (!exists(disk + "/" + name)) continue;
            EXPECT_TRUE(readFile(disk + "/" + name).ends_with("</plist>\n")) << name;
        }
    }
}

} // namespace
