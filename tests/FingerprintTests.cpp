#include "ScriptedDesktop.h"
#include "fingerprint/modHashing.h"
#include "fingerprint/modMD5.h"

// From the test suite of RFC 1321; then 'a' as often as the number says, around the lengths where
// the pad takes one more block.
TEST(Digest, IsThatOfTheStandard) {
    const std::string_view cases = R"(
        > d41d8cd98f00b204e9800998ecf8427e; abc > 900150983cd24fb0d6963f7d28e17f72;
        message digest > f96b697d7cb7938d525a2f31aaf161d0;
        12345678901234567890123456789012345678901234567890123456789012345678901234567890
        > 57edf4a22be3c955ac49da2e2107b67a;
        55 > ef1772b6dff9a122358552954ad0df65; 56 > 3b0c8ac703f828b04c6c197006d17218;
        63 > b06521f39153d618550606be297466d5; 64 > 014842d480b571495a4a0363793f7367;
        65 > c743a45e0d2e6a95cb859adae0248435; 119 > 8a7bd0732ed6a28ce75f6dabc90e1613;
        120 > 5f61c0ccad4cac44c75ff505e1f1e537; 184 > 63642b027ee89938c922722650f2eb9b)";
    for (const std::string& row : Fields(cases, ';')) {
        std::string message = Fields(row, '>')[0];
        const bool counts = message.size() < 4 && std::atoi(message.c_str()) > 0;
        message = counts ? std::string(std::stoul(message), 'a') : message;
        EXPECT_EQ(modMD5::DigestText(message), Fields(row, '>')[1]) << message;
    }
}

TEST(Fingerprint, CoversTheFirstThreeMebibytes) {
    World world;
    const auto hash = [&](const auto& path, std::int32_t limit) {
        return modHashing::HashFile(world.Screen.Services, path, limit);
    };
    const char* const capped = "d1dd210d6b1312cb342b56d02bd5e651"; // 3 MiB of byte 0
    const auto file = world.Folder.Write("report", "");
    std::filesystem::resize_file(file, 3145728);
    EXPECT_EQ(hash(file, 3145728), capped);
    std::ofstream(file, std::ios::app) << "more";
    EXPECT_EQ(hash(file, 3145732), capped);
    EXPECT_EQ(hash(file, 100), "6d0bb00954ceb7fbee436bb55a8397a9"); // 100 of them
    EXPECT_EQ(hash(world.Folder.Path / "none", 100) + hash(world.Folder.Path, 100), "");
    EXPECT_EQ(world.TakeBoxes(), Lines{});
}
