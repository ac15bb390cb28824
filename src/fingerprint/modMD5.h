#pragma once

#include <string>
#include <string_view>

namespace modMD5 {

// The MD5 digest (RFC 1321) of the whole message `text`, one byte per character, as 32
// hexadecimal digits in lower case. Meant for messages below 512 MiB: the length field holds the
// bit count in 32 bits.
std::string DigestText(std::string_view text);

} // namespace modMD5
