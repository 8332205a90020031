#pragma once

namespace px::menukey {

inline constexpr const char* kRightMenu = "array right menu";
inline constexpr const char* kNewFile = "array new file";
inline constexpr const char* kFolderIcon = "array folder icon";
inline constexpr const char* kCommonApp = "array common app";
inline constexpr const char* kCommonPath = "array common path";

inline constexpr const char* kUpdateVersion = "update version";
inline constexpr const char* kCommonPathNextMenu = "common path next menu";

} // namespace px::menukey
