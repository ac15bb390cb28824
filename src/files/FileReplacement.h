#pragma once

#include "files/RawFile.h"

#include <filesystem>
#include <string_view>

// Replaces the content of a file, or creates the file. Until Commit the file is the old one,
// whole; afterwards it is the new one, whole, even if the power fails. The file keeps its owner
// and permissions as far as the system lets it; a symbolic link to it remains a link.
//
// The new content is written to a temporary file in the same folder. Only if the folder forbids
// new files, or the file cannot be replaced, is it written in place, where a failure can leave a
// mixture of old and new. On a network share the old file gets another name for a moment.
class FileReplacement {
public:
    // Throws std::system_error, as all members do, if the target exists and cannot be opened for
    // writing, or is no regular file.
    explicit FileReplacement(const std::filesystem::path& target);
    // Leaves no temporary file, but where Commit could not bring the old one back.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Appends to the new content.
    void Write(std::string_view bytes);

    // Brings the new content to the disk and into the place of the old one. Then deletes temporary
    // files older than a day that killed saves left in the folder.
    void Commit();

private:
    FileReplacement() = default;

    RawFile Old; // not open if there is no such file; Path is where all links end
    RawFile New; // the temporary file; not open if Old is written in place
};
