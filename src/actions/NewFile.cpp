#include "actions/NewFile.h"

#include "actions/Alerts.h"
#include "actions/BlankDocuments.h"
#include "config/PXMenuManager.h"
#include "support/FileHash.h"
#include "support/FileIO.h"
#include "support/GlibOwners.h"
#include "support/Localization.h"
#include "support/PXFile.h"
#include "support/PathName.h"
#include "support/Xdg.h"

#include <cctype>
#include <glib.h>
#include <iostream>
#include <memory>
#include <sys/stat.h>

namespace px::newfile {

namespace {

bool existsAt(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

void reportFailure(platform::Ui& ui, const Error& error) {
    std::cerr << "pxmenu: " << error.message << '\n';
    alert::alertWithMsg(ui, localized("Error Common Tip"));
}

ErrorOr<void> writeContents(const std::string& path, const std::string& ext,
                            const std::string& templatePath, creation::Existing existing) {
    if (filehash::isValid(templatePath)) return creation::copyItem(templatePath, path, existing);
    if (!blank::isBuiltIn(ext)) return creation::writeFile(path, {}, existing);
    auto document = blank::documentPath(ext);
    if (!document) return Error{"the blank " + ext + " document is not installed", ENOENT};
    auto bytes = TRY(io::readWholeFile(*document));
    return creation::writeFile(path, bytes, existing);
}

} // namespace

std::string targetFolder(const std::vector<std::string>& selection) {
    if (selection.empty() || selection.front().empty()) return xdg::homeDirectory();
    const std::string& first = selection.front();
    return filehash::isFolder(first) ? first : path::deletingLastPathComponent(first);
}

std::string effectiveExtension(const PXMenuItem& item) {
    if (!item.ext.empty()) return item.ext;
    return filehash::isValid(item.templatePath) ? std::string() : item.key;
}

std::string plainFilePath(const std::string& folder, const PXMenuItem& item) {
    const std::string base =
        filehash::isValid(item.fileName) ? item.fileName : localized("Untitled");
    std::string result = path::appendingPathComponent(folder, base);
    const std::string ext = effectiveExtension(item);
    if (!item.isSpecialFile && !ext.empty()) result += "." + ext;
    return result;
}

std::string pathWithExtension(const std::string& path, const std::string& ext) {
    if (ext.empty() || path::lowercased(path::pathExtension(path)) == path::lowercased(ext))
        return path;
    return path + "." + ext;
}

void replaceFileAlert(platform::Ui& ui, const std::string& path, const PathBlock& block) {
    if (!existsAt(path)) return block(path, creation::Existing::Keep);
    platform::Ui::Alert prompt;
    prompt.message = localized("Tip");
    prompt.informative = localizedFormat("Same FileName Tip", path::lastPathComponent(path));
    prompt.buttons = {localized("Keep Both"), localized("Stop"), localized("Replace")};
    const int answer = ui.runAlert(prompt);
    if (answer == kReplace) return block(path, creation::Existing::Replace);
    if (answer == kKeepBoth) block(filehash::uniquePath(path), creation::Existing::Keep);
}

bool makeFile(const Request& request, const std::string& path, const std::string& ext,
              const PXMenuItem* item, creation::Existing existing) {
    auto made = writeContents(path, ext, item ? item->templatePath : std::string(), existing);
    if (made.isError()) {
        reportFailure(request.ui(), made.error());
        return false;
    }
    if (request.preferences().boolForKey("open new file"))
        request.workspace().openURL(PXFile(path).url());
    return true;
}

std::string uuid() {
    glib::String text(g_uuid_string_random());
    std::string result(text.get());
    for (char& c : result)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

} // namespace px::newfile
