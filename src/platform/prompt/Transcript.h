#pragma once

#include <iosfwd>
#include <mutex>
#include <nlohmann/json_fwd.hpp>

namespace px::platform {

// The record a scripted run leaves: one JSON object per line, each line flushed as soon as it
// is written, so a reader sees every prompt even when the run ends right after it.
class Transcript {
  public:
    // Writes to standard output.
    Transcript();
    explicit Transcript(std::ostream& out);
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    // Texts that are not valid UTF-8 (file names may be any bytes) are written with the
    // replacement character instead of failing.
    void write(const nlohmann::json& line);
    // Drops every later line (a driven run whose script ended stops its record there, as a
    // scripted run ends its process).
    void close();

  private:
    std::mutex m_mutex;
    std::ostream& m_out;
    bool m_closed = false;
};

} // namespace px::platform
