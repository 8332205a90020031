#pragma once

#include "support/ErrorOr.h"

#include <string>
#include <string_view>
#include <vector>

// A folder's ".hidden" file: one entry name per line, honoured by the file managers, which
// then leave those entries out of the folder's view. Edits keep every other line as it stands
// (blank lines, comments and names of other entries, in their order), never list a name twice,
// and replace the file atomically; the file goes away once it holds nothing but blank lines.
namespace px::hiddenfile {

inline constexpr std::string_view kFileName = ".hidden";

// A name that can stand on a line of its own: not empty, not "." or "..", and without a line
// break or a slash. Other names are never written and are skipped by the edits below.
bool canList(std::string_view name);

// The text with each listable name that is not yet on a line of its own appended as a line.
std::string withNamesAdded(std::string_view content, const std::vector<std::string>& names);
// The text without the lines that equal one of the names.
std::string withNamesRemoved(std::string_view content, const std::vector<std::string>& names);
// True when the text holds nothing but white space.
bool isBlank(std::string_view content);

// The lines of the folder's ".hidden" file; empty when there is none.
std::vector<std::string> listedNames(const std::string& folder);

// Lists the names in the folder's ".hidden" file, creating it when needed. Nothing is written
// when every name is listed already. An unreadable existing file is left alone and reported.
ErrorOr<void> hide(const std::string& folder, const std::vector<std::string>& names);
// Takes the names off the list, removing the file once it holds nothing but blank lines.
ErrorOr<void> unhide(const std::string& folder, const std::vector<std::string>& names);

} // namespace px::hiddenfile
