#include "Compare.h"
#include "Input.h"
#include "fingerprint/modMD5.h"

#include <QCryptographicHash>

#include <openssl/evp.h>

#include <array>
#include <memory>
#include <string>

namespace {

// The floor is the digest of a common library, looked up once.
void Digest(benchmark::State& state, std::size_t size) {
    const std::string text = Input::Report(31, size).substr(0, size);
    const QByteArray right = QCryptographicHash::hash(text, QCryptographicHash::Md5);
    const std::unique_ptr<EVP_MD, decltype(&EVP_MD_free)> library(
        EVP_MD_fetch(nullptr, "MD5", nullptr), EVP_MD_free);
    std::string ours;
    std::array<unsigned char, 16> theirs{};
    Bench::Compare(
        state, 1, Bench::Timing([&] { ours = modMD5::DigestText(text); }), Bench::Timing([&] {
            EVP_Digest(text.data(), text.size(), theirs.data(), nullptr, library.get(), nullptr);
        }));
    Bench::Require(ours == right.toHex().toStdString(), "our digest");
    Bench::Require(right == QByteArrayView(theirs.data(), 16), "the library's digest");
}

BENCHMARK_CAPTURE(Digest, short, std::size_t{64} << 10)->Name("MD5 of 64 KiB");
BENCHMARK_CAPTURE(Digest, long, std::size_t{3} << 20)->Name("MD5 of 3 MiB");

} // namespace
