#include "Input.h"
#include "Rows.h"
#include "fingerprint/modMD5.h"

#include <openssl/evp.h>

#include <array>
#include <memory>
#include <string>

namespace {

// The digest of a common library, set up once, so that each message costs the digest alone.
class LibraryDigest {
public:
    std::string DigestText(const std::string& text) {
        std::array<unsigned char, 16> digest{};
        unsigned length = 0;
        Bench::Require(EVP_DigestInit_ex2(Context.get(), Kind.get(), nullptr) == 1 &&
                           EVP_DigestUpdate(Context.get(), text.data(), text.size()) == 1 &&
                           EVP_DigestFinal_ex(Context.get(), digest.data(), &length) == 1,
                       "the library refuses to digest");
        std::string digits;
        for (const unsigned char byte : digest) {
            digits += "0123456789abcdef"[byte >> 4];
            digits += "0123456789abcdef"[byte & 15];
        }
        return digits;
    }

private:
    struct Free {
        void operator()(EVP_MD* kind) const { EVP_MD_free(kind); }
        void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
    };
    std::unique_ptr<EVP_MD, Free> Kind{EVP_MD_fetch(nullptr, "MD5", nullptr)};
    std::unique_ptr<EVP_MD_CTX, Free> Context{EVP_MD_CTX_new()};
};

Bench::Pair Digests(std::size_t size, int messages) {
    std::string message;
    Input::Sequence bytes;
    while (message.size() < size) {
        message += static_cast<char>(bytes.Next(256));
    }
    const auto library = std::make_shared<LibraryDigest>();
    const auto text = std::make_shared<const std::string>(std::move(message));
    const std::string expected = library->DigestText(*text);
    const auto run = [expected, messages](auto digest) {
        const double seconds = Bench::Seconds([&] {
            for (int i = 0; i < messages; ++i) {
                Bench::Require(digest() == expected, "digest");
            }
        });
        return seconds / messages;
    };
    return {[=] { return run([&] { return modMD5::DigestText(*text); }); },
            [=] { return run([&] { return library->DigestText(*text); }); }};
}

} // namespace

void Bench::AddFingerprintRows() {
    Add({"MD5 of 64 KiB", Rule::Throughput, 1.0, 101,
         [] { return Digests(std::size_t{64} << 10, Sized(48, 1)); }});
    Add({"MD5 of 3 MiB", Rule::Throughput, 1.0, 101,
         [] { return Digests(std::size_t{3} << 20, 1); }});
}
