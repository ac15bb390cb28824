#include "fingerprint/modHashing.h"

#include "files/Files.h"
#include "fingerprint/modMD5.h"

#include <algorithm>
#include <new>
#include <system_error>

namespace modHashing {
namespace {

constexpr std::int32_t LeadingBytesCap = 3'145'728; // 3 MiB

void ShowFailure(const Desktop& desktop, const std::error_code& failure) {
    desktop.ShowMessage({Describe(failure), std::to_string(failure.value())});
}

} // namespace

std::string HashFile(const Desktop& desktop, const std::filesystem::path& path,
                     std::int32_t byteLimit) {
    try {
        if (!Files::FileExists(path)) {
            return "";
        }
        const std::int32_t limit = std::clamp(byteLimit, 0, LeadingBytesCap);
        return modMD5::DigestText(Files::LeadingBytes(path, static_cast<std::size_t>(limit)));
    } catch (const std::system_error& failure) {
        ShowFailure(desktop, failure.code());
    } catch (const std::bad_alloc&) {
        ShowFailure(desktop, std::make_error_code(std::errc::not_enough_memory));
    }
    return "-1";
}

} // namespace modHashing
