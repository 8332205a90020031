#include "media/Digest.h"

#include <array>
#include <openssl/err.h>
#include <openssl/evp.h>

namespace px::digest {

namespace {

struct MdDeleter {
    void operator()(EVP_MD* md) const { EVP_MD_free(md); }
};
struct MdContextDeleter {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

const char* openSslName(Algorithm algorithm) {
    switch (algorithm) {
    case Algorithm::MD5:
        return "MD5";
    case Algorithm::SHA1:
        return "SHA1";
    case Algorithm::SHA256:
        return "SHA256";
    case Algorithm::SHA512:
        return "SHA512";
    }
    return "SHA512";
}

// Turns OpenSSL's error queue into one message, emptying the queue so that later calls on this
// thread start clean.
Error openSslError(const std::string& what) {
    std::string message = what;
    while (unsigned long code = ERR_get_error()) {
        std::array<char, 256> text{};
        ERR_error_string_n(code, text.data(), text.size());
        message += std::string(": ") + text.data();
    }
    return Error{message, 0};
}

} // namespace

struct Context::Handle {
    std::unique_ptr<EVP_MD, MdDeleter> md;
    std::unique_ptr<EVP_MD_CTX, MdContextDeleter> context;
};

Algorithm algorithmForTag(std::int64_t tag) {
    switch (tag) {
    case 0:
        return Algorithm::MD5;
    case 1:
        return Algorithm::SHA1;
    case 2:
        return Algorithm::SHA256;
    default:
        return Algorithm::SHA512;
    }
}

std::size_t digestLength(Algorithm algorithm) {
    switch (algorithm) {
    case Algorithm::MD5:
        return 16;
    case Algorithm::SHA1:
        return 20;
    case Algorithm::SHA256:
        return 32;
    case Algorithm::SHA512:
        return 64;
    }
    return 64;
}

Context::Context(Algorithm algorithm)
    : m_algorithm(algorithm), m_handle(std::make_unique<Handle>()) {
    m_handle->md.reset(EVP_MD_fetch(nullptr, openSslName(algorithm), nullptr));
    m_handle->context.reset(EVP_MD_CTX_new());
}

Context::~Context() = default;

ErrorOr<void> Context::initialise() {
    std::string name = openSslName(m_algorithm);
    if (!m_handle->md) return openSslError(name + " is not available");
    if (!m_handle->context) return openSslError("cannot make a " + name + " context");
    if (EVP_DigestInit_ex2(m_handle->context.get(), m_handle->md.get(), nullptr) != 1)
        return openSslError("cannot start a " + name + " digest");
    return {};
}

ErrorOr<void> Context::update(std::span<const unsigned char> bytes) {
    if (EVP_DigestUpdate(m_handle->context.get(), bytes.data(), bytes.size()) != 1)
        return openSslError(std::string("cannot add to the ") + openSslName(m_algorithm) +
                            " digest");
    return {};
}

ErrorOr<std::vector<unsigned char>> Context::finalise() {
    std::vector<unsigned char> result(EVP_MAX_MD_SIZE);
    unsigned int size = 0;
    if (EVP_DigestFinal_ex(m_handle->context.get(), result.data(), &size) != 1)
        return openSslError(std::string("cannot finish the ") + openSslName(m_algorithm) +
                            " digest");
    result.resize(size);
    return result;
}

std::string hexText(std::span<const unsigned char> bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (unsigned char byte : bytes) {
        text.push_back(kDigits[byte >> 4]);
        text.push_back(kDigits[byte & 0x0F]);
    }
    return text;
}

} // namespace px::digest
