#pragma once

#include "archive/WinZipAesKeys.h"
#include "support/ErrorOr.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

typedef struct evp_cipher_ctx_st EVP_CIPHER_CTX;

namespace px::archive {

// Encrypts one entry's data the WinZip AES way, piece after piece: AES-256 in counter mode with
// a little-endian counter starting at 1, and HMAC-SHA1 over the encrypted bytes, of which the
// first 10 bytes end the entry.
class WinZipAesStream {
  public:
    static ErrorOr<WinZipAesStream> start(const WinZipAesKeys& keys);

    WinZipAesStream(WinZipAesStream&&) noexcept;
    WinZipAesStream& operator=(WinZipAesStream&&) noexcept;
    ~WinZipAesStream();

    // Encrypts the bytes in place; pieces may have any length.
    ErrorOr<void> encrypt(std::span<std::byte> data);
    // The authentication code of everything encrypted.
    std::array<std::uint8_t, 10> finish();

  private:
    WinZipAesStream(EVP_CIPHER_CTX* cipher, const WinZipAesKeys& keys);
    ErrorOr<void> refillKeyStream();

    struct CipherFree {
        void operator()(EVP_CIPHER_CTX* cipher) const;
    };
    std::unique_ptr<EVP_CIPHER_CTX, CipherFree> m_cipher;
    HmacSha1 m_mac;
    std::uint64_t m_counter = 0;
    std::array<std::uint8_t, 4096> m_keyStream{};
    std::size_t m_used = 4096;
};

} // namespace px::archive
