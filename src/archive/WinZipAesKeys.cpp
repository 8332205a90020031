// PBKDF2 runs once per encrypted entry and dominates the cost of many small entries, so its
// rounds work on SHA-1's block function directly: every round hashes exactly one padded block
// from the precomputed inner and outer states.
#define OPENSSL_SUPPRESS_DEPRECATED
#include "archive/WinZipAesKeys.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <openssl/rand.h>

namespace px::archive {

namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kDigest = 20;
constexpr int kRounds = 1000;

// A block holding a 20-byte message after a 64-byte key block: the message, the padding and
// the length of both in bits.
void padDigestBlock(std::uint8_t (&block)[kBlock]) {
    std::memset(block + kDigest, 0, kBlock - kDigest);
    block[kDigest] = 0x80;
    const std::uint32_t bits = (kBlock + kDigest) * 8;
    block[62] = static_cast<std::uint8_t>(bits >> 8);
    block[63] = static_cast<std::uint8_t>(bits);
}

void storeDigest(const SHA_CTX& state, std::uint8_t* out) {
    const std::uint32_t words[5] = {state.h0, state.h1, state.h2, state.h3, state.h4};
    for (int i = 0; i < 5; ++i) {
        out[4 * i] = static_cast<std::uint8_t>(words[i] >> 24);
        out[4 * i + 1] = static_cast<std::uint8_t>(words[i] >> 16);
        out[4 * i + 2] = static_cast<std::uint8_t>(words[i] >> 8);
        out[4 * i + 3] = static_cast<std::uint8_t>(words[i]);
    }
}

// HMAC of one 20-byte message held in `inner` (already padded); leaves the result in the first
// 20 bytes of `outer` (already padded).
void hmacBlock(const SHA_CTX& innerStart, const SHA_CTX& outerStart, std::uint8_t (&inner)[kBlock],
               std::uint8_t (&outer)[kBlock]) {
    SHA_CTX state = innerStart;
    SHA1_Transform(&state, inner);
    storeDigest(state, outer);
    state = outerStart;
    SHA1_Transform(&state, outer);
    storeDigest(state, outer);
}

} // namespace

HmacSha1::HmacSha1(std::string_view key) {
    std::uint8_t padded[kBlock] = {};
    if (key.size() > kBlock)
        SHA1(reinterpret_cast<const unsigned char*>(key.data()), key.size(), padded);
    else
        std::memcpy(padded, key.data(), key.size());
    std::uint8_t pad[kBlock];
    for (std::size_t i = 0; i < kBlock; ++i)
        pad[i] = padded[i] ^ 0x36;
    SHA1_Init(&m_inner);
    SHA1_Update(&m_inner, pad, kBlock);
    for (std::size_t i = 0; i < kBlock; ++i)
        pad[i] = padded[i] ^ 0x5c;
    SHA1_Init(&m_outer);
    SHA1_Update(&m_outer, pad, kBlock);
}

void HmacSha1::start() {
    m_running = m_inner;
}

void HmacSha1::update(const void* data, std::size_t length) {
    SHA1_Update(&m_running, data, length);
}

std::array<std::uint8_t, 20> HmacSha1::finish() {
    std::array<std::uint8_t, 20> digest{};
    SHA1_Final(digest.data(), &m_running);
    SHA_CTX outer = m_outer;
    SHA1_Update(&outer, digest.data(), digest.size());
    SHA1_Final(digest.data(), &outer);
    return digest;
}

// One 20-byte block of PBKDF2's output: U1 = HMAC(salt || index), Un = HMAC(Un-1), xored.
void HmacSha1::roundBlock(const std::uint8_t* salt, std::size_t saltLength, std::uint32_t index,
                          int rounds, std::uint8_t* output) const {
    HmacSha1 first = *this;
    first.start();
    first.update(salt, saltLength);
    const std::uint8_t big[4] = {
        static_cast<std::uint8_t>(index >> 24), static_cast<std::uint8_t>(index >> 16),
        static_cast<std::uint8_t>(index >> 8), static_cast<std::uint8_t>(index)};
    first.update(big, sizeof big);
    std::uint8_t inner[kBlock], outer[kBlock];
    padDigestBlock(inner);
    padDigestBlock(outer);
    const auto u1 = first.finish();
    std::memcpy(inner, u1.data(), kDigest);
    std::memcpy(output, u1.data(), kDigest);
    for (int round = 1; round < rounds; ++round) {
        hmacBlock(m_inner, m_outer, inner, outer);
        for (std::size_t i = 0; i < kDigest; ++i)
            output[i] ^= outer[i];
        std::memcpy(inner, outer, kDigest);
    }
}

void HmacSha1::pbkdf2(const std::uint8_t* salt, std::size_t saltLength, int rounds,
                      std::uint8_t* output, std::size_t outputLength) const {
    std::uint8_t block[kDigest];
    for (std::uint32_t index = 1; outputLength > 0; ++index) {
        roundBlock(salt, saltLength, index, rounds, block);
        const std::size_t take = std::min(outputLength, kDigest);
        std::memcpy(output, block, take);
        output += take;
        outputLength -= take;
    }
}

ErrorOr<WinZipAesKeys> makeWinZipAesKeys(const HmacSha1& password) {
    WinZipAesKeys keys;
    if (RAND_bytes(keys.salt.data(), static_cast<int>(keys.salt.size())) != 1)
        return Error{"the system gives no random data for an encryption key", EIO};
    std::uint8_t derived[66];
    password.pbkdf2(keys.salt.data(), keys.salt.size(), kRounds, derived, sizeof derived);
    std::memcpy(keys.aesKey.data(), derived, 32);
    std::memcpy(keys.macKey.data(), derived + 32, 32);
    std::memcpy(keys.passwordCheck.data(), derived + 64, 2);
    return keys;
}

} // namespace px::archive
