#include "archive/WinZipAesStream.h"

#include <cerrno>
#include <cstring>
#include <openssl/evp.h>

namespace px::archive {

namespace {

std::string_view bytesOf(const std::array<std::uint8_t, 32>& key) {
    return {reinterpret_cast<const char*>(key.data()), key.size()};
}

Error cipherError() {
    return Error{"the encryption library failed", EIO};
}

} // namespace

void WinZipAesStream::CipherFree::operator()(EVP_CIPHER_CTX* cipher) const {
    EVP_CIPHER_CTX_free(cipher);
}

ErrorOr<WinZipAesStream> WinZipAesStream::start(const WinZipAesKeys& keys) {
    EVP_CIPHER_CTX* cipher = EVP_CIPHER_CTX_new();
    if (cipher == nullptr) return cipherError();
    WinZipAesStream stream(cipher, keys);
    if (EVP_EncryptInit_ex(cipher, EVP_aes_256_ecb(), nullptr, keys.aesKey.data(), nullptr) != 1 ||
        EVP_CIPHER_CTX_set_padding(cipher, 0) != 1)
        return cipherError();
    return stream;
}

WinZipAesStream::WinZipAesStream(EVP_CIPHER_CTX* cipher, const WinZipAesKeys& keys)
    : m_cipher(cipher), m_mac(bytesOf(keys.macKey)) {
    m_mac.start();
}

WinZipAesStream::WinZipAesStream(WinZipAesStream&&) noexcept = default;
WinZipAesStream& WinZipAesStream::operator=(WinZipAesStream&&) noexcept = default;
WinZipAesStream::~WinZipAesStream() = default;

// The counter blocks of the next stretch of key stream, encrypted in one call.
ErrorOr<void> WinZipAesStream::refillKeyStream() {
    std::array<std::uint8_t, 4096> counters{};
    for (std::size_t block = 0; block < counters.size(); block += 16) {
        const std::uint64_t value = ++m_counter;
        for (int i = 0; i < 8; ++i)
            counters[block + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
    int written = 0;
    if (EVP_EncryptUpdate(m_cipher.get(), m_keyStream.data(), &written, counters.data(),
                          static_cast<int>(counters.size())) != 1 ||
        written != static_cast<int>(m_keyStream.size()))
        return cipherError();
    m_used = 0;
    return {};
}

ErrorOr<void> WinZipAesStream::encrypt(std::span<std::byte> data) {
    auto* bytes = reinterpret_cast<std::uint8_t*>(data.data());
    std::size_t left = data.size();
    while (left > 0) {
        if (m_used == m_keyStream.size()) TRY(refillKeyStream());
        const std::size_t take = std::min(left, m_keyStream.size() - m_used);
        for (std::size_t i = 0; i < take; ++i)
            bytes[i] ^= m_keyStream[m_used + i];
        m_used += take;
        bytes += take;
        left -= take;
    }
    m_mac.update(data.data(), data.size());
    return {};
}

std::array<std::uint8_t, 10> WinZipAesStream::finish() {
    const auto digest = m_mac.finish();
    std::array<std::uint8_t, 10> code{};
    std::memcpy(code.data(), digest.data(), code.size());
    return code;
}

} // namespace px::archive
