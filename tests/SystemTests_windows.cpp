#include "ScriptedDesktop.h"
#include "System.h"
#include "datafile/DataFile.h"
#include "fingerprint/TurnLedger.h"
#include "fingerprint/modHashing.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <chrono>
#include <thread>
#include <windows.h>

using namespace std::chrono_literals;

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A file as another program holds it.
class Held {
public:
    Held(const std::filesystem::path& path, DWORD sharing)
        : File(::CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0,
                             nullptr)) {}
    ~Held() { ::CloseHandle(File); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    const HANDLE File; // INVALID_HANDLE_VALUE when it cannot be held so
};

} // namespace

std::vector<std::filesystem::path> NoPlainFiles(const std::filesystem::path& folder) {
    for (const auto mark : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
        const auto marked = folder / ("marked" + std::to_string(mark) + ".htm");
        std::ofstream{marked};
        EXPECT_TRUE(::SetFileAttributesW(marked.c_str(), static_cast<DWORD>(mark)));
    }
    return {folder, folder / "none", "CON", "NUL", folder / "nul.htm", R"(\\.\pipe\report.htm)"};
}

TEST(CodePage, IsTheSystemsOwn) {
    for (int code = 0; code < 256; ++code) {
        const char narrow = static_cast<char>(code);
        wchar_t wide = 0;
        ASSERT_EQ(::MultiByteToWideChar(1252, 0, &narrow, 1, &wide, 1), 1);
        EXPECT_EQ(CodePage::ToUnicode({&narrow, 1})[0], wide) << code;
    }
}

TEST(Files, ThatAnotherProgramHoldsAreReadAsFarAsItLets) {
    World world;
    const auto hash = [&](const auto& path) {
        return modHashing::HashFile(world.Screen.Services, path, 100);
    };
    const auto report = world.Folder.Write("report.html", "Aron: came, killing 2 Rats\r\n\r\n");
    const std::string fingerprint = hash(report);
    EXPECT_EQ(fingerprint.size(), 32U);
    {
        const Held shared(report, ShareAll);
        EXPECT_EQ(hash(report), fingerprint);
    }
    {
        const Held closed(report, 0);
        EXPECT_EQ(hash(report), "");
        world.Import(report);
        EXPECT_EQ(world.Tallies(), "");
    }
    // Others may do what they like with a report that is being read, and have it to themselves
    // when its import is over.
    {
        LineReader reader(report);
        std::filesystem::rename(report, world.Folder.Path / "renamed.html");
        EXPECT_EQ(reader.ReadLine(), "Aron: came, killing 2 Rats");
    }
    world.Import(world.Folder.Path / "renamed.html");
    EXPECT_EQ(world.Tallies(), "Aron: Rats 2");
    EXPECT_NE(Held(world.Folder.Path / "renamed.html", 0).File, INVALID_HANDLE_VALUE);
}

TEST(DataFile, ReplacesTheOldFileOrLeavesItAlone) {
    const TemporaryFolder folder;
    const auto target = folder.Write("target.qvt", "old");
    for (const auto& refused :
         {folder.Path, folder.Path / "none" / "x.qvt", folder.Path / "nul.qvt"}) {
        EXPECT_THROW(FileReplacement{refused}, std::system_error) << refused;
    }
    {
        const Held reader(target, FILE_SHARE_READ);
        EXPECT_THROW(FileReplacement{target}, std::system_error);
    }
    // Held when the new content is whole: too long, and then for a moment.
    for (const auto& [time, size] : {std::pair(1500ms, 3U), {200ms, 6U}}) {
        FileReplacement replacement(target);
        replacement.Write("newest");
        auto held = std::make_unique<Held>(target, FILE_SHARE_READ | FILE_SHARE_WRITE);
        std::thread scanner([&held, time = time] {
            std::this_thread::sleep_for(time);
            held.reset();
        });
        try {
            replacement.Commit();
            EXPECT_EQ(size, 6U);
        } catch (const std::system_error&) {
            EXPECT_EQ(size, 3U);
        }
        scanner.join();
        EXPECT_EQ(std::filesystem::file_size(target), size);
    }
    ASSERT_TRUE(::SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_HIDDEN));
    Main::WriteDataFile(*std::make_unique<KillLedger>(), target);
    EXPECT_EQ(::GetFileAttributesW(target.c_str()) & FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(std::filesystem::file_size(target), 3'080'401U);
    EXPECT_EQ(FilesIn(folder.Path), 1U);
}
