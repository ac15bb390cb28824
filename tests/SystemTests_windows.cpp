#include "ScriptedDesktop.h"
#include "System.h"
#include "files/FileReplacement.h"
#include "files/Files.h"
#include "fingerprint/modHashing.h"

#include <chrono>
#include <set>
#include <thread>
#include <tuple>
#include <windows.h>

namespace {

// Opens a file as another program would, with this sharing mode.
std::shared_ptr<void> Hold(const std::filesystem::path& path, DWORD sharing) {
    auto* const file =
        ::CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    return {file, ::CloseHandle};
}

bool Save(const std::filesystem::path& target, std::string_view bytes) {
    const auto save = [&] {
        FileReplacement replacement(target);
        return replacement.Write(bytes), replacement.Commit(), true;
    };
    return Outcome(save).has_value();
}

} // namespace

std::vector<std::filesystem::path> NoRegularFiles(const std::filesystem::path& folder) {
    for (const auto mark : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
        const auto marked = folder / ("marked" + std::to_string(mark) + ".htm");
        std::ofstream{marked};
        EXPECT_TRUE(::SetFileAttributesW(marked.c_str(), static_cast<DWORD>(mark)));
    }
    return {folder, folder / "none", "CON", "NUL", folder / "nul.htm", R"(\\.\pipe\report.htm)"};
}

TEST(Files, AreSharedWithOtherProgramsWhileTheyAreRead) {
    World world;
    const auto report = world.Folder.Write("report.html", "Aron: came, killing 2 Rats\r\n\r\n");
    const auto renamed = world.Folder.Path / "renamed.html";
    {
        LineReader reader(report);
        std::filesystem::rename(report, renamed);
        EXPECT_EQ(reader.ReadLine(), "Aron: came, killing 2 Rats");
    }
    const auto other = Hold(renamed, 0);
    EXPECT_EQ(modHashing::HashFile(world.Screen.Services, renamed, 100), "");
}

TEST(DataFile, ReplacesTheOldFileOrLeavesItAlone) {
    const TemporaryFolder folder;
    const auto target = folder.Write("target.qvt", "old");
    for (const auto& refused :
         {folder.Path, folder.Path / "none" / "x.qvt", folder.Path / "nul.qvt"}) {
        EXPECT_THROW(FileReplacement{refused}, std::system_error) << refused;
    }
    ASSERT_TRUE(::SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_HIDDEN));
    // Held from the beginning to the end: with sharing for writing it can be opened, not replaced.
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE;
    using Row = std::tuple<std::chrono::milliseconds, DWORD, std::size_t>;
    for (const auto& [time, sharing, size] :
         {Row(1500, shared, 3), Row(200, shared, 4), Row(200, 0, 5)}) {
        auto other = Hold(target, sharing);
        std::jthread scanner([&other, time = time] {
            std::this_thread::sleep_for(time);
            other.reset();
        });
        EXPECT_EQ(Save(target, std::string(size, 'n')), size > 3);
        scanner.join();
        EXPECT_EQ(std::filesystem::file_size(target), size);
    }
    EXPECT_EQ(::GetFileAttributesW(target.c_str()) & FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(FilesIn(folder.Path), 1U);
    // The deletion of a temporary file may be pending: no later one has its name.
    std::set<std::filesystem::path> names;
    for (std::size_t count = 2; count <= 3; ++count) {
        const FileReplacement replacement(target);
        names.insert(std::filesystem::directory_iterator(folder.Path), {});
        EXPECT_EQ(names.size(), count); // with the target
    }
}

// Beyond 260 characters, and in the system's own form.
TEST(Files, AreFoundByPathsOfEveryKind) {
    const TemporaryFolder folder;
    const auto deep = folder.Path / std::string(220, 'd');
    const std::filesystem::path own = LR"(\\?\)" + deep.native();
    ASSERT_TRUE(::CreateDirectoryW(own.c_str(), nullptr));
    for (const auto& form : {own, deep}) {
        const auto file = form / "x.htm";
        EXPECT_TRUE(Save(file, "created") && Save(file, "replaced")) << file;
        EXPECT_EQ(Files::LeadingBytes(file, 100), "replaced");
        EXPECT_EQ(Files::InFolder(form, ".htm"), std::vector{file});
        EXPECT_TRUE(::DeleteFileW((own / "x.htm").c_str()));
    }
    EXPECT_TRUE(::RemoveDirectoryW(own.c_str())); // no temporary file is left
}
