#pragma once

#include <string>

namespace px {

// One file or folder, by absolute path. Every property is derived from the path on each call.
class PXFile {
  public:
    explicit PXFile(std::string filePath);

    const std::string path;

    std::string filename() const; // "a.tar.gz"
    std::string name() const;     // "a.tar"
    std::string folder() const;   // the path without its last component
    std::string ext() const;      // lower-cased extension, "" when none
    std::string url() const;      // "file:///..." URI; "" for a relative path
    bool isFolder() const;        // a symbolic link to a folder is not one
};

} // namespace px
