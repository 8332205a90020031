#pragma once

#include "support/ErrorOr.h"

#include <string>

// Writing a new file beside others without ever replacing one: the data goes to a hidden
// temporary file in the destination folder, which takes its final, unused name only once it is
// complete.
namespace px::media {

class UniqueOutput {
  public:
    // Creates an empty hidden file in the folder of `target` (mode 0666 less the umask).
    static ErrorOr<UniqueOutput> beside(const std::string& target);
    UniqueOutput(UniqueOutput&& other) noexcept;
    UniqueOutput& operator=(UniqueOutput&&) = delete;
    UniqueOutput(const UniqueOutput&) = delete;
    // Removes the temporary file unless it was published.
    ~UniqueOutput();

    const std::string& temporaryPath() const { return m_temporary; }

    // Makes the written data durable (a write that failed at the last flush is reported here
    // and nothing is published), then gives the temporary file the first free name of `wanted`,
    // "<base>-1.<ext>", ...; a name taken meanwhile by someone else is skipped, never replaced.
    // Answers the name it took.
    ErrorOr<std::string> publish(const std::string& wanted);

  private:
    explicit UniqueOutput(std::string temporary) : m_temporary(std::move(temporary)) {}
    std::string m_temporary;
};

} // namespace px::media
