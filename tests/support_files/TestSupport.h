#pragma once

#include <optional>
#include <string>
#include <vector>

namespace px::test {

// A fresh temporary folder, removed with everything in it when the object goes.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return m_path; }
    std::string operator/(const std::string& name) const { return m_path + "/" + name; }
    // Writes a file (making parent folders) and answers its path.
    std::string write(const std::string& name, const std::string& contents = {}) const;
    std::string mkdir(const std::string& name) const;

  private:
    std::string m_path;
};

// Sets (or with nullopt, unsets) an environment variable for the object's life.
class ScopedEnv {
  public:
    ScopedEnv(std::string name, std::optional<std::string> value);
    ~ScopedEnv();
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

  private:
    std::string m_name;
    std::optional<std::string> m_old;
};

// Points HOME and every XDG variable into a temporary folder for the object's life.
class ScopedXdg {
  public:
    ScopedXdg();
    const std::string& home() const { return m_root.path(); }
    std::string configHome() const { return m_root / ".config"; }
    std::string dataHome() const { return m_root / ".local/share"; }

  private:
    TempDir m_root;
    ScopedEnv m_home, m_config, m_data, m_cache, m_runtime;
};

std::string readFile(const std::string& path);
bool exists(const std::string& path);

struct ProcessResult {
    int exitStatus = -1;
    std::string out;
    std::string err;
};

// Runs a program with an argument vector (no shell), feeding `input` to its standard input.
ProcessResult runProcess(const std::vector<std::string>& argv, const std::string& input = {});

// The names in a folder, sorted.
std::vector<std::string> listing(const std::string& folder);
// The permission bits of the item, 0 when it cannot be read.
unsigned modeOf(const std::string& path);

} // namespace px::test
