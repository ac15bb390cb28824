#pragma once

#include <string>
#include <string_view>

namespace modMD5 {

// Returns the MD5 digest (RFC 1321) of `text` as 32 hexadecimal digits in lower case. Only for
// texts below 512 MiB, since the bit count is kept in 32 bits.
std::string DigestText(std::string_view text);

} // namespace modMD5
