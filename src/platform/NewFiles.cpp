#include "platform/NewFiles.h"

#include <chrono>
#include <string>
#include <system_error>

namespace NewFiles {
namespace {

constexpr const char* Prefix = ".slaying-tallies-";

} // namespace

std::filesystem::path Name(unsigned long process, int attempt) {
    return Prefix + std::to_string(process) + '-' + std::to_string(attempt);
}

void Sweep(const std::filesystem::path& folder) {
    const auto yesterday = std::filesystem::file_time_type::clock::now() - std::chrono::hours(24);
    const std::filesystem::path prefix = Prefix;
    std::error_code failed;
    std::filesystem::directory_iterator entries(folder, failed);
    for (; !failed && entries != std::filesystem::directory_iterator(); entries.increment(failed)) {
        if (entries->path().filename().native().starts_with(prefix.native())) {
            std::error_code unknown;
            const auto written = entries->last_write_time(unknown);
            if (!unknown && written < yesterday) {
                std::filesystem::remove(entries->path(), unknown); // what cannot be removed stays
            }
        }
    }
}

} // namespace NewFiles
