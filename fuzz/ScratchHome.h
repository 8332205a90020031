#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace px::fuzz {

// A private home for one fuzzing or benchmark process: HOME and every XDG folder point into a
// fresh temporary folder, so nothing it runs reads or writes the user's configuration. The
// folder and everything in it go when the object does.
class ScratchHome {
  public:
    ScratchHome() {
        std::string pattern = std::filesystem::temp_directory_path() / "pxmenu-scratch-XXXXXX";
        if (!::mkdtemp(pattern.data())) throw std::runtime_error("cannot create a scratch folder");
        m_root = pattern;
        point("HOME", "");
        point("XDG_CONFIG_HOME", ".config");
        point("XDG_DATA_HOME", ".local/share");
        point("XDG_CACHE_HOME", ".cache");
        point("XDG_RUNTIME_DIR", "run");
    }
    ~ScratchHome() {
        std::error_code ignored;
        std::filesystem::remove_all(m_root, ignored);
    }
    ScratchHome(const ScratchHome&) = delete;
    ScratchHome& operator=(const ScratchHome&) = delete;

    const std::string& path() const { return m_root; }

    // A folder below the home, made with its parents; answers its path.
    std::string folder(const std::string& relative) const {
        std::string result = m_root + "/" + relative;
        std::error_code ignored;
        std::filesystem::create_directories(result, ignored);
        return result;
    }

  private:
    void point(const char* variable, const std::string& relative) {
        std::string value = relative.empty() ? m_root : folder(relative);
        ::setenv(variable, value.c_str(), 1);
    }

    std::string m_root;
};

} // namespace px::fuzz
