#include "support/PXFile.h"

#include "support/FileHash.h"
#include "support/GlibOwners.h"
#include "support/PathName.h"

namespace px {

PXFile::PXFile(std::string filePath) : path(std::move(filePath)) {}

std::string PXFile::filename() const {
    return px::path::lastPathComponent(path);
}
std::string PXFile::name() const {
    return px::path::deletingPathExtension(filename());
}
std::string PXFile::folder() const {
    return px::path::deletingLastPathComponent(path);
}
std::string PXFile::ext() const {
    return px::path::lowercased(px::path::pathExtension(path));
}

std::string PXFile::url() const {
    glib::String uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    return uri ? std::string(uri.get()) : std::string{};
}

bool PXFile::isFolder() const {
    return filehash::isFolder(path);
}

} // namespace px
