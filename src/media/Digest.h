#pragma once

#include "support/ErrorOr.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

// File digests through OpenSSL's EVP interface, read in a fixed buffer so that any size of file
// is digested in constant memory.
namespace px::digest {

enum class Algorithm { MD5, SHA1, SHA256, SHA512 };

// The algorithm of a digest submenu child by its 0-based position: 0 MD5, 1 SHA-1, 2 SHA-256,
// anything else SHA-512.
Algorithm algorithmForTag(std::int64_t tag);
// The digest's length in bytes (16, 20, 32, 64).
std::size_t digestLength(Algorithm algorithm);

// How much of a file is read at a time, and how many such chunks are read ahead of the digest:
// chunks small enough to still be in the CPU's cache when they are digested.
inline constexpr std::size_t kReadBufferSize = std::size_t{256} << 10;
inline constexpr std::size_t kReadAheadDepth = 4;

// One running digest: initialise, feed bytes, finalise. Owns OpenSSL's context.
class Context {
  public:
    explicit Context(Algorithm algorithm);
    ~Context();
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    Algorithm algorithm() const { return m_algorithm; }
    std::size_t length() const { return digestLength(m_algorithm); }

    // Starts a fresh digest; needed before the first update and again after finalise.
    ErrorOr<void> initialise();
    ErrorOr<void> update(std::span<const unsigned char> bytes);
    ErrorOr<std::vector<unsigned char>> finalise();

  private:
    struct Handle;
    Algorithm m_algorithm;
    std::unique_ptr<Handle> m_handle;
};

// The bytes as lower-case hexadecimal, two digits each, no separators.
std::string hexText(std::span<const unsigned char> bytes);

// The digest of everything in a regular file, as hexadecimal text. Fails for a file that
// cannot be opened or read, and for anything that is not a regular file (a folder, a pipe, a
// device), with a message naming the file.
ErrorOr<std::string> digestOfFile(const std::string& path, Context& context);
ErrorOr<std::string> digestOfFile(const std::string& path, Algorithm algorithm);

} // namespace px::digest

// The digest texts of files; nothing when the file cannot be read.
namespace px::filehash {

std::optional<std::string> hashOfFileAtPath(const std::string& path, digest::Context& context);
std::optional<std::string> md5HashOfFileAtPath(const std::string& path);
std::optional<std::string> sha1HashOfFileAtPath(const std::string& path);
std::optional<std::string> sha256HashOfFileAtPath(const std::string& path);
std::optional<std::string> sha512HashOfFileAtPath(const std::string& path);

} // namespace px::filehash
