#include "support/PathName.h"

#include "support/GlibOwners.h"

#include <glib.h>
#include <memory>

namespace px::path {

namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

// The position of the extension's dot in the last component, or npos when it has none.
size_t extensionDot(std::string_view component) {
    size_t dot = component.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == component.size())
        return std::string_view::npos;
    for (char c : component.substr(dot + 1))
        if (isBlank(c) || c == '/') return std::string_view::npos;
    return dot;
}

} // namespace

std::string lastPathComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    if (path == "/") return "/";
    size_t slash = path.rfind('/');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string deletingLastPathComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return "";
    if (slash == 0) return "/";
    return std::string(withoutTrailingSlashes(path.substr(0, slash)));
}

std::string pathExtension(std::string_view path) {
    std::string component = lastPathComponent(path);
    size_t dot = extensionDot(component);
    return dot == std::string::npos ? std::string{} : component.substr(dot + 1);
}

std::string deletingPathExtension(std::string_view path) {
    path = withoutTrailingSlashes(path);
    size_t extensionSize = pathExtension(path).size();
    if (extensionSize == 0) return std::string(path);
    return std::string(path.substr(0, path.size() - extensionSize - 1));
}

std::string appendingPathComponent(std::string_view path, std::string_view component) {
    std::string joined(withoutTrailingSlashes(path));
    while (!component.empty() && component.front() == '/')
        component.remove_prefix(1);
    if (joined.empty()) return std::string(component);
    if (joined.back() != '/') joined += '/';
    return joined.append(component);
}

std::string lowercased(std::string_view text) {
    std::string copy(text);
    if (!g_utf8_validate(copy.data(), static_cast<gssize>(copy.size()), nullptr)) {
        // Not UTF-8 (file names may hold any bytes): lower-case the ASCII letters only.
        for (char& c : copy)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        return copy;
    }
    glib::String lower(g_utf8_strdown(copy.c_str(), -1));
    return lower ? std::string(lower.get()) : copy;
}

} // namespace px::path
