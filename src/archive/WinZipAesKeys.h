#pragma once

#include "support/ErrorOr.h"

#include <array>
#include <cstdint>
#include <openssl/sha.h>
#include <string>
#include <string_view>

namespace px::archive {

// The keys of one WinZip AES-256 entry: a fresh random salt, and the AES key, the
// authentication key and the password check derived from it with PBKDF2-HMAC-SHA1 (1000
// rounds).
struct WinZipAesKeys {
    std::array<std::uint8_t, 16> salt{};
    std::array<std::uint8_t, 32> aesKey{};
    std::array<std::uint8_t, 32> macKey{};
    std::array<std::uint8_t, 2> passwordCheck{};
};

// HMAC-SHA1 with a fixed key, its inner and outer states computed once. Copies are cheap and
// independent, so one per thread costs nothing.
class HmacSha1 {
  public:
    explicit HmacSha1(std::string_view key);

    // Streaming use: start(), update() any number of times, then finish().
    void start();
    void update(const void* data, std::size_t length);
    std::array<std::uint8_t, 20> finish();

    // PBKDF2 with this key as the password: `output.size()` bytes for the salt.
    void pbkdf2(const std::uint8_t* salt, std::size_t saltLength, int rounds, std::uint8_t* output,
                std::size_t outputLength) const;

  private:
    void roundBlock(const std::uint8_t* salt, std::size_t saltLength, std::uint32_t index,
                    int rounds, std::uint8_t* output) const;

    SHA_CTX m_inner{};
    SHA_CTX m_outer{};
    SHA_CTX m_running{};
};

// Derives the keys of a new entry for the password (already held by `password`). Fails only
// when the system's random source does.
ErrorOr<WinZipAesKeys> makeWinZipAesKeys(const HmacSha1& password);

} // namespace px::archive
