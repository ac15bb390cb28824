#include "ScriptedDesktop.h"
#include "System.h"
#include "files/FileReplacement.h"
#include "files/Files.h"
#include "fingerprint/modHashing.h"

#include <chrono>
#include <thread>
#include <windows.h>

using namespace std::chrono_literals;

namespace {

// Opens a file as another program would, with this sharing mode.
std::shared_ptr<void> Hold(const std::filesystem::path& path, DWORD sharing) {
    auto* const file =
        ::CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    return {file, ::CloseHandle};
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
    // Held when the new content is whole: too long, and then for a moment.
    for (const auto& [time, size] : {std::pair(1500ms, 3U), {200ms, 6U}}) {
        FileReplacement replacement(target);
        replacement.Write("newest");
        auto other = Hold(target, FILE_SHARE_READ | FILE_SHARE_WRITE);
        std::jthread scanner([&other, time = time] {
            std::this_thread::sleep_for(time);
            other.reset();
        });
        EXPECT_EQ(Outcome([&] { return replacement.Commit(), true; }).has_value(), size == 6);
        scanner.join();
        EXPECT_EQ(std::filesystem::file_size(target), size);
    }
    EXPECT_EQ(::GetFileAttributesW(target.c_str()) & FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(FilesIn(folder.Path), 1U);
}
