#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

// Files as the system gives them. Each system has its own source file for this header. All
// failures are std::system_error with the system's own code.

// Whether the system keeps a file out of its user's sight by a mark, whatever its name.
bool IsMarkedHidden(const std::filesystem::path& path);

// A plain file opened for reading, shared with every other reader.
class RawFile {
public:
    // Fails for what is not a plain file (a folder, pipe, socket, device); waits for nothing.
    explicit RawFile(const std::filesystem::path& path);
    ~RawFile();
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    // Reads up to the size of `buffer` and gives the bytes read, 0 at the end of the file only.
    std::size_t Read(std::span<char> buffer);

    // In bytes, as of now.
    std::uint64_t Size() const;

private:
    int Handle = -1;
};

// Puts a new content in the place of a file, or makes the file. Until Commit the target is the
// old file, whole; from then on it is the new one, whole, whenever the power goes. It keeps its
// permissions; a symbolic link to it stays a link.
// Only in a folder that forbids new files, or the replacing of this one, is the target written in
// place, and a failure then can leave a mixture.
class FileReplacement {
public:
    // Fails when the target is there and cannot be opened for writing, or is not a plain file.
    explicit FileReplacement(const std::filesystem::path& target);
    // Leaves no trace of a content that was not committed.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Appends to the new content.
    void Write(std::string_view bytes);

    // Brings the new content to the disk and then into the place of the old one. Removes what a
    // save that was killed left in the folder, once it is a day old.
    void Commit();

private:
    FileReplacement() = default;

    int Handle = -1;
    std::filesystem::path Target;  // where all links end
    std::filesystem::path NewFile; // beside the target, empty when that is written in place
    std::uint64_t Written = 0;     // bytes
};

// Opens the null device as standard input, output or error where the program was started without
// it. Else the next file opened would stand there, and a word printed would land in its middle.
void OpenStandardStreams();
