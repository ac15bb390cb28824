#include "fingerprint/modMD5.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace modMD5 {
namespace {

using Word = std::uint32_t; // sums wrap at 32 bits, as in RFC 1321

struct Digest {
    Word DigestByteCount = 0; // with padding
    std::array<Word, 4> DigestState = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
    std::array<char, 64> DigestBuffer; // holds DigestByteCount modulo 64 bytes
};

// The words of a block, lowest byte first.
std::array<Word, 16> DecodeBlock(const char* block) {
    std::array<Word, 16> words;
    std::memcpy(words.data(), block, sizeof words);
    static_assert(std::endian::native == std::endian::little);
    return words;
}

// One step: a becomes b + ((a + round function + x + t) rotated left by s).
void DigestStep(Word& a, Word b, Word function, Word x, int s, Word t) {
    a = b + std::rotl(a + function + x + t, s);
}
void FF(Word& a, Word b, Word c, Word d, Word x, int s, Word t) {
    DigestStep(a, b, (b & c) | (~b & d), x, s, t);
}
// The two halves never have a bit in common, so + is the same as |, and faster: the processor can
// add either half as soon as it is ready.
void GG(Word& a, Word b, Word c, Word d, Word x, int s, Word t) {
    DigestStep(a, b, (b & d) + (c & ~d), x, s, t);
}
void HH(Word& a, Word b, Word c, Word d, Word x, int s, Word t) {
    DigestStep(a, b, b ^ c ^ d, x, s, t);
}
void II(Word& a, Word b, Word c, Word d, Word x, int s, Word t) {
    DigestStep(a, b, c ^ (b | ~d), x, s, t);
}

void DigestBlock(Digest& digest, const char* block) {
    const std::array<Word, 16> x = DecodeBlock(block);
    auto [a, b, c, d] = digest.DigestState;

    FF(a, b, c, d, x[0], 7, 0xd76aa478);
    FF(d, a, b, c, x[1], 12, 0xe8c7b756);
    FF(c, d, a, b, x[2], 17, 0x242070db);
    FF(b, c, d, a, x[3], 22, 0xc1bdceee);
    FF(a, b, c, d, x[4], 7, 0xf57c0faf);
    FF(d, a, b, c, x[5], 12, 0x4787c62a);
    FF(c, d, a, b, x[6], 17, 0xa8304613);
    FF(b, c, d, a, x[7], 22, 0xfd469501);
    FF(a, b, c, d, x[8], 7, 0x698098d8);
    FF(d, a, b, c, x[9], 12, 0x8b44f7af);
    FF(c, d, a, b, x[10], 17, 0xffff5bb1);
    FF(b, c, d, a, x[11], 22, 0x895cd7be);
    FF(a, b, c, d, x[12], 7, 0x6b901122);
    FF(d, a, b, c, x[13], 12, 0xfd987193);
    FF(c, d, a, b, x[14], 17, 0xa679438e);
    FF(b, c, d, a, x[15], 22, 0x49b40821);

    GG(a, b, c, d, x[1], 5, 0xf61e2562);
    GG(d, a, b, c, x[6], 9, 0xc040b340);
    GG(c, d, a, b, x[11], 14, 0x265e5a51);
    GG(b, c, d, a, x[0], 20, 0xe9b6c7aa);
    GG(a, b, c, d, x[5], 5, 0xd62f105d);
    GG(d, a, b, c, x[10], 9, 0x02441453);
    GG(c, d, a, b, x[15], 14, 0xd8a1e681);
    GG(b, c, d, a, x[4], 20, 0xe7d3fbc8);
    GG(a, b, c, d, x[9], 5, 0x21e1cde6);
    GG(d, a, b, c, x[14], 9, 0xc33707d6);
    GG(c, d, a, b, x[3], 14, 0xf4d50d87);
    GG(b, c, d, a, x[8], 20, 0x455a14ed);
    GG(a, b, c, d, x[13], 5, 0xa9e3e905);
    GG(d, a, b, c, x[2], 9, 0xfcefa3f8);
    GG(c, d, a, b, x[7], 14, 0x676f02d9);
    GG(b, c, d, a, x[12], 20, 0x8d2a4c8a);

    HH(a, b, c, d, x[5], 4, 0xfffa3942);
    HH(d, a, b, c, x[8], 11, 0x8771f681);
    HH(c, d, a, b, x[11], 16, 0x6d9d6122);
    HH(b, c, d, a, x[14], 23, 0xfde5380c);
    HH(a, b, c, d, x[1], 4, 0xa4beea44);
    HH(d, a, b, c, x[4], 11, 0x4bdecfa9);
    HH(c, d, a, b, x[7], 16, 0xf6bb4b60);
    HH(b, c, d, a, x[10], 23, 0xbebfbc70);
    HH(a, b, c, d, x[13], 4, 0x289b7ec6);
    HH(d, a, b, c, x[0], 11, 0xeaa127fa);
    HH(c, d, a, b, x[3], 16, 0xd4ef3085);
    HH(b, c, d, a, x[6], 23, 0x04881d05);
    HH(a, b, c, d, x[9], 4, 0xd9d4d039);
    HH(d, a, b, c, x[12], 11, 0xe6db99e5);
    HH(c, d, a, b, x[15], 16, 0x1fa27cf8);
    HH(b, c, d, a, x[2], 23, 0xc4ac5665);

    II(a, b, c, d, x[0], 6, 0xf4292244);
    II(d, a, b, c, x[7], 10, 0x432aff97);
    II(c, d, a, b, x[14], 15, 0xab9423a7);
    II(b, c, d, a, x[5], 21, 0xfc93a039);
    II(a, b, c, d, x[12], 6, 0x655b59c3);
    II(d, a, b, c, x[3], 10, 0x8f0ccc92);
    II(c, d, a, b, x[10], 15, 0xffeff47d);
    II(b, c, d, a, x[1], 21, 0x85845dd1);
    II(a, b, c, d, x[8], 6, 0x6fa87e4f);
    II(d, a, b, c, x[15], 10, 0xfe2ce6e0);
    II(c, d, a, b, x[6], 15, 0xa3014314);
    II(b, c, d, a, x[13], 21, 0x4e0811a1);
    II(a, b, c, d, x[4], 6, 0xf7537e82);
    II(d, a, b, c, x[11], 10, 0xbd3af235);
    II(c, d, a, b, x[2], 15, 0x2ad7d2bb);
    II(b, c, d, a, x[9], 21, 0xeb86d391);

    digest.DigestState[0] += a;
    digest.DigestState[1] += b;
    digest.DigestState[2] += c;
    digest.DigestState[3] += d;
}

// Digests more of the message. Whole blocks are not copied; the buffer keeps an incomplete one.
void DigestUpdate(Digest& digest, std::string_view bytes) {
    const std::size_t live = digest.DigestByteCount % 64;
    const std::size_t room = 64 - live;
    digest.DigestByteCount += static_cast<Word>(bytes.size());
    char* const free = digest.DigestBuffer.data() + live;
    if (bytes.size() < room) {
        bytes.copy(free, bytes.size());
        return;
    }
    if (live > 0) {
        bytes.copy(free, room);
        DigestBlock(digest, digest.DigestBuffer.data());
        bytes.remove_prefix(room);
    }
    for (; bytes.size() >= 64; bytes.remove_prefix(64)) {
        DigestBlock(digest, bytes.data());
    }
    bytes.copy(digest.DigestBuffer.data(), bytes.size());
}

// Digests the padding and the length.
void DigestFinish(Digest& digest) {
    const Word bitCount = digest.DigestByteCount * 8;
    const std::size_t live = digest.DigestByteCount % 64;
    std::array<char, 64> pad{'\x80'};
    DigestUpdate(digest, {pad.data(), (live < 56 ? 56 : 120) - live});
    std::array<char, 8> length{};
    std::memcpy(length.data(), &bitCount, sizeof bitCount);
    DigestUpdate(digest, {length.data(), length.size()});
}

// The state as hexadecimal digits, the lowest byte of each word first.
std::string DigestToText(const Digest& digest) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const Word word : digest.DigestState) {
        for (int shift = 0; shift < 32; shift += 8) {
            text.push_back(digits[word >> (shift + 4) & 0xF]);
            text.push_back(digits[word >> shift & 0xF]);
        }
    }
    return text;
}

} // namespace

std::string DigestText(std::string_view text) {
    Digest digest;
    DigestUpdate(digest, text);
    DigestFinish(digest);
    return DigestToText(digest);
}

} // namespace modMD5
