#include "files/FileReplacement.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <system_error>

namespace {

constexpr std::string_view Prefix = ".slaying-tallies-";

// Creates a temporary file beside `old`. Not open if the folder forbids new files.
RawFile CreateTemporary(const RawFile& old) {
    // No name is used twice: on Windows one whose file is deleted, but still open in another
    // program, looks as if the folder forbade it.
    static unsigned long attempt = 0;
    const std::string name = std::string(Prefix) + std::to_string(ProcessNumber()) + '-';
    RawFile created;
    while (created.Create(old.Path.parent_path() / (name + std::to_string(attempt++)), old) ==
           Creation::NameTaken) {
    }
    return created;
}

// Whether a file name is one of CreateTemporary's: prefix, digits, '-', digits.
bool IsTemporary(const std::filesystem::path& name) {
    const auto isDigit = [](auto c) { return c >= '0' && c <= '9'; };
    const auto& text = name.native();
    if (text.size() < Prefix.size() || !std::equal(Prefix.begin(), Prefix.end(), text.begin())) {
        return false;
    }
    const auto process = text.begin() + Prefix.size();
    const auto dash = std::find_if_not(process, text.end(), isDigit);
    return dash != process && dash != text.end() && *dash == '-' && dash + 1 != text.end() &&
           std::all_of(dash + 1, text.end(), isDigit);
}

// Deletes temporary files older than a day. A newer one may still be in use, perhaps by another
// machine, where its process number means nothing. What cannot be deleted stays.
void SweepTemporaries(const std::filesystem::path& folder) {
    const auto yesterday = std::filesystem::file_time_type::clock::now() - std::chrono::hours(24);
    for (const auto& file : RegularFilesIn(folder, true)) {
        std::error_code unknown;
        if (IsTemporary(file.filename()) && !is_symlink(file, unknown) &&
            last_write_time(file, unknown) < yesterday && !unknown) {
            Delete(file);
        }
    }
}

} // namespace

// Delegates to the empty object, so that the destructor cleans up if this throws.
FileReplacement::FileReplacement(const std::filesystem::path& target) : FileReplacement() {
    Old = RawFile::OpenTarget(target);
    if (Old.IsOpen() && !Old.CanBeReplaced()) {
        return; // in place
    }
    New = CreateTemporary(Old);
    if (!New.IsOpen() && !Old.IsOpen()) {
        throw std::system_error(std::make_error_code(std::errc::permission_denied));
    }
    if (New.IsOpen() && Old.IsOpen()) {
        New.CopyRights(Old);
    }
}

FileReplacement::~FileReplacement() {
    New.Close();
    if (!New.Path.empty()) {
        Delete(New.Path);
    }
}

void FileReplacement::Write(std::string_view bytes) {
    (New.IsOpen() ? New : Old).Write(bytes);
}

void FileReplacement::Commit() {
    if (!New.IsOpen()) {
        Old.Truncate();
        Old.Sync();
        return;
    }
    New.Replace(Old);
    New.Close();
    SweepTemporaries(Old.Path.parent_path());
}
