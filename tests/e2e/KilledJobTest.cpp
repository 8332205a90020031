// A job killed in the middle leaves only recognisable temporaries, which the next job writing
// into the same folder removes, unless their process still runs.
#include "CliFixture.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

using namespace px::test;

namespace {

// Field 22 of /proc/self/stat: this process's start time in clock ticks since boot.
std::string ownStartTime() {
    const std::string stat = readFile("/proc/self/stat");
    std::size_t at = stat.rfind(')');
    for (int field = 2; field < 22; ++field)
        at = stat.find(' ', at + 1);
    return stat.substr(at + 1, stat.find(' ', at + 1) - at - 1);
}

class KilledJobTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus(); }
    std::string writeNoise(const std::string& name, std::size_t size) {
        std::string bytes(size, '\0');
        std::uint64_t state = 88172645463325252ull;
        for (char& c : bytes) {
            state ^= state << 13, state ^= state >> 7, state ^= state << 17;
            c = static_cast<char>(state);
        }
        return work.write(name, bytes);
    }
    Strings compressArgs(const std::string& item, const std::string& archive) {
        const int tag = tagAt({"Encrypted Compression"}, request(0, work.path(), {item}));
        const std::string script =
            answerFiles.write("save-" + std::to_string(++m_runs), "save " + archive + "\n");
        Strings args{PXMENU_BINARY,       "run",  "--tag",
                     std::to_string(tag), "--ui", "script:" + script};
        const Strings rest = request(0, work.path(), {item});
        args.insert(args.end(), rest.begin(), rest.end());
        return args;
    }
    static Strings temporariesIn(const std::string& folder) {
        Strings found;
        for (const auto& name : listing(folder))
            if (name.starts_with(".pxmenu-tmp-")) found.push_back(name);
        return found;
    }
    TempDir out;

  private:
    int m_runs = 0;
};

TEST_F(KilledJobTest, TheNextJobInTheFolderRemovesWhatADeadJobLeftAndNothingOfALiveOne) {
    const std::string big = writeNoise("big.bin", 96u << 20);
    Strings args = compressArgs(big, out / "big.zip");
    std::vector<char*> argv;
    for (auto& arg : args)
        argv.push_back(arg.data());
    argv.push_back(nullptr);
    pid_t child = 0;
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", O_WRONLY, 0);
    ASSERT_EQ(::posix_spawn(&child, argv[0], &quiet, nullptr, argv.data(), environ), 0);
    posix_spawn_file_actions_destroy(&quiet);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (temporariesIn(out.path()).empty() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the job ended before it could be killed";
    const Strings killed = temporariesIn(out.path());
    ASSERT_FALSE(killed.empty());
    EXPECT_FALSE(exists(out / "big.zip"));
    for (const auto& name : killed)
        EXPECT_NE(name.find("-" + std::to_string(child) + "-"), std::string::npos) << name;

    const std::string self = std::to_string(::getpid()), started = ownStartTime();
    const std::string live = ".pxmenu-tmp-" + self + "-" + started + "-live00";
    const std::string reused = ".pxmenu-tmp-" + self + "-" + started + "1-reused";
    const std::string notOurs = ".pxmenu-tmpx-1-1-other";
    for (const auto& name : {live, reused, notOurs})
        out.write(name, "partial");

    const std::string small = work.write("small.txt", "small");
    const ProcessResult next = runProcess(compressArgs(small, out / "small.zip"));
    ASSERT_EQ(next.exitStatus, 0) << next.err;
    EXPECT_EQ(listing(out.path()), (Strings{live, notOurs, "small.zip"}));
}

} // namespace
