#include "ScriptedDesktop.h"
#include "fingerprint/modHashing.h"
#include "fingerprint/modMD5.h"

TEST(Digest, IsThatOfTheStandard) {
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/digests.md")) {
        const bool isCount = row[0].size() < 4 && Text::IsDigit(row[0][0]);
        EXPECT_EQ(modMD5::DigestText(isCount ? std::string(std::stoul(row[0]), 'a') : row[0]),
                  row[1])
            << row[0];
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
