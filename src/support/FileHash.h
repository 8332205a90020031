#pragma once

#include <string>
#include <string_view>
#include <vector>

// Tests and transforms on POSIX paths held as strings. None of them reports errors: a failed
// file-system call answers false or an empty string.
namespace px::filehash {

// False for a null text, for a text that is empty once white space and line breaks are
// trimmed, and for "(null)".
bool isValid(std::string_view text);
bool isValid(const char* text);

// A folder, not a symbolic link to one.
bool isFolder(const std::string& path);
// A folder whose name has an extension ("Photos.bundle").
bool isPackage(const std::string& path);
// The item's content type is an image type; false when the item cannot be looked up.
bool isImage(const std::string& path);
// The user's desktop folder, compared as strings.
bool isDesktop(const std::string& path);
// One of the protected folders, compared as strings ("/home/u/Desktop/" does not match).
bool isSystemFolder(const std::string& path);
// The protected folders in their order: "/home", "/", the home folder, its desktop,
// documents, downloads, pictures, music and videos folders, "/usr", "/etc", "/opt", "/media",
// "/mnt".
std::vector<std::string> systemFolders();
// The process may write to the path.
bool isWritable(const std::string& path);
// The owner has no write permission on the item; false when nothing is there.
bool isLocked(const std::string& path);
// The desktop's metadata gives the item a custom icon, or the item is a folder whose
// ".directory" file names one.
bool hasCustomIcon(const std::string& path);

// Removes the item and everything in it; true when something was there and is now gone.
// Refuses, answering false, an empty path, "/", "." or "..", and the protected folders.
bool remove(const std::string& path);
// Replaces whatever is at the path with a new empty folder, creating missing parents.
bool createDir(const std::string& path);

// The scratch folder `name` inside the application-support folder. An existing one is kept
// when `clean` is false and replaced by an empty one when true; a missing one is created.
// Empty when the folder cannot be made or the name would leave the support folder.
std::string toTempFolderPath(const std::string& name, bool clean = true);
// Removes every entry of the application-support folder whose name begins with ".".
void removeAllTempFolder();

// The text without the white space (not line breaks) at its ends.
std::string trimWhiteSpace(std::string_view text);

// The path itself when nothing is there; else the first free "<base>-<n><.ext>" for n = 1,
// 2, ... ("report.PDF" gives "report-1.PDF", "Makefile" gives "Makefile-1").
std::string uniquePath(const std::string& path);

// The lower-case hexadecimal MD5 digest of a regular file's contents; for anything else
// (a folder, an unreadable file, nothing at all) the last component without its extension.
std::string fileMD5(const std::string& path);

// The names in a folder, in the file system's order, without "." and ".."; empty when the
// folder cannot be read.
std::vector<std::string> folderEntries(const std::string& path);

} // namespace px::filehash
