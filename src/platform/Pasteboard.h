#pragma once

#include <optional>
#include <string>

namespace px::platform {

// The general pasteboard: the desktop clipboard, or standard output where there is none.
class Pasteboard {
  public:
    virtual ~Pasteboard();
    virtual void clearContents() = 0;
    // Puts plain text on the pasteboard.
    virtual void setString(const std::string& text) = 0;
    // The plain text on the pasteboard, if there is any.
    virtual std::optional<std::string> string() = 0;

    // Replaces the contents with the text, trimmed of white space (not line breaks).
    void copyTrimmed(const std::string& text);
};

} // namespace px::platform
