#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace px {

// One file or folder, by absolute path. Every property is derived from the path on each call,
// except the scratch folder and the child list, which are made once and kept.
//
// Records are held by std::shared_ptr (`fileWithPath`); a child refers to its parent weakly,
// so a child kept after its parent is gone simply has no parent. A record made directly on
// the stack has children without a parent. A record is used by one thread at a time.
class PXFile : public std::enable_shared_from_this<PXFile> {
  public:
    static std::shared_ptr<PXFile> fileWithPath(std::string filePath);
    explicit PXFile(std::string filePath);
    PXFile(const PXFile&) = delete;
    PXFile& operator=(const PXFile&) = delete;

    const std::string path;

    // The record whose child list holds this one; null for a record made directly.
    std::shared_ptr<PXFile> parent() const { return m_parent.lock(); }
    // The visible entries of the folder in the file system's order, listed on the first call
    // and never refreshed; empty for a file or an unreadable folder. Every call answers the
    // same records (a copy of the kept list, so it outlives a temporary parent record).
    std::vector<std::shared_ptr<PXFile>> children();
    // This file's private scratch folder (named after the digest of its contents), emptied
    // and made on the first call and kept; empty when it cannot be made.
    std::string tempPath();
    // Removes the scratch folder, if one was made, and forgets it.
    void removeTempPath();

    std::string filename() const;   // "a.tar.gz"
    std::string name() const;       // "a.tar"
    std::string simpleName() const; // "a"
    std::string folder() const;     // the path without its last component
    std::string ext() const;        // lower-cased extension, "" when none
    std::string url() const;        // "file:///..." URI; "" for a relative path
    // The freedesktop icon-theme name for the item's content type, else "icon".
    std::string icon() const;
    std::string size() const; // "1.50 MB"
    // "yyyy-MM-dd HH:mm:ss" in local time; "" when the process may not write to the path.
    std::string createDate() const;
    std::string modifyDate() const;

    bool isFolder() const; // a symbolic link to a folder is not one
    bool isHideFile() const;
    bool isDesktop() const;
    bool isImage() const; // by extension: png, tiff, jp2, jpg, jpeg, gif, bmp
    bool isKindle() const;
    bool isTnef() const;
    bool isCHM() const;

  private:
    std::weak_ptr<PXFile> m_parent;
    std::optional<std::string> m_tempPath;
    std::optional<std::vector<std::shared_ptr<PXFile>>> m_children;
};

} // namespace px
