#include "ScriptedDesktop.h"
#include "fingerprint/modHashing.h"
#include "fingerprint/modMD5.h"

// From the test suite of RFC 1321; then 'a' as often as the number says, at the lengths where the
// padding needs another block.
TEST(Digest, IsThatOfTheStandard) {
    for (const Lines& row : Rows(R"(
        > d41d8cd98f00b204e9800998ecf8427e; abc > 900150983cd24fb0d6963f7d28e17f72;
        message digest > f96b697d7cb7938d525a2f31aaf161d0;
        12345678901234567890123456789012345678901234567890123456789012345678901234567890
        > 57edf4a22be3c955ac49da2e2107b67a;
        55 > ef1772b6dff9a122358552954ad0df65; 56 > 3b0c8ac703f828b04c6c197006d17218;
        63 > b06521f39153d618550606be297466d5; 64 > 014842d480b571495a4a0363793f7367;
        65 > c743a45e0d2e6a95cb859adae0248435; 120 > 5f61c0ccad4cac44c75ff505e1f1e537)")) {
        const int count = row[0].size() < 4 ? std::atoi(row[0].c_str()) : 0;
        const std::string message =
            count > 0 ? std::string(static_cast<std::size_t>(count), 'a') : row[0];
        EXPECT_EQ(modMD5::DigestText(message), row[1]) << row[0];
    }
}

TEST(Fingerprint, CoversTheFirstThreeMebibytes) {
    World world;
    const auto file = world.Folder.Write("report", std::string(3145728, '\0') + "more");
    for (const auto& [path, limit, expected] :
         {std::tuple(file, 3145728, "d1dd210d6b1312cb342b56d02bd5e651"),
          {file, 3145732, "d1dd210d6b1312cb342b56d02bd5e651"},
          {file, 100, "6d0bb00954ceb7fbee436bb55a8397a9"},
          {world.Folder.Path / "none", 100, ""},
          {world.Folder.Path, 100, ""}}) {
        EXPECT_EQ(modHashing::HashFile(world.Screen.Services, path, limit), expected) << limit;
    }
    EXPECT_EQ(world.TakeBoxes(), Lines{});
}
