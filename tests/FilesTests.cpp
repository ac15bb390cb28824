#include "ScriptedDesktop.h"
#include "System.h"
#include "datafile/FieldReader.h"
#include "files/Files.h"
#include "text/Failure.h"

using namespace std::string_literals;

// Also at the edge of the buffer of 32 KiB, and of one that has grown.
TEST(LineReader, EndsLinesAtEveryMark) {
    const TemporaryFolder folder;
    for (const std::size_t length : {1U, 32763U, 32764U, 32765U, 32766U, 65533U, 65534U, 300000U}) {
        for (const std::string mark : {"\r", "\n", "\r\n"}) {
            const std::string line(length, 'x');
            LineReader reader(folder.Write("lines", "\n\r" + line + mark + mark + line + mark));
            for (const std::string& expected : {""s, ""s, line, ""s, line}) {
                EXPECT_TRUE(!reader.AtEnd() && reader.ReadLine() == expected) << length << mark;
            }
            EXPECT_TRUE(reader.AtEnd());
            EXPECT_THROW(reader.ReadLine(), Failure);
        }
    }
}

// Less than 2 GiB for a file, 16 MiB for a line, a sentence or a text, 64 KiB for a number.
TEST(Readers, RefuseWhatIsLongerThanTheirLimit) {
    World world;
    for (const bool fits : {false, true}) {
        const auto large = world.Folder.Write("large", "");
        std::filesystem::resize_file(large, 2'147'483'648 - fits);
        EXPECT_EQ(Outcome([&] { return LineReader(large).Size(); }).has_value(), fits);
        const auto reads = [&](const std::string& bytes, auto read) {
            const auto file = world.Folder.Write("long", bytes + '\n');
            EXPECT_EQ(Outcome([&] { return read(file); }).has_value(), fits) << bytes.substr(0, 2);
        };
        const std::string text(16'777'217 - fits, ' ');
        reads(text, [](const auto& file) { return LineReader(file).ReadLine().size(); });
        for (const std::string quote : {"", "\""}) {
            reads(quote + text + quote,
                  [](const auto& file) { return FieldReader(file).ReadText().size(); });
            reads(quote + std::string(65'537 - fits, '0') + quote,
                  [](const auto& file) { return FieldReader(file).ReadNumber<int>(); });
        }
        world.ImportText("A: killing 1" + text.substr(15) + "/Rat//");
        EXPECT_EQ(world.Tallies(), fits ? "A: Rat 1" : "");
    }
}

TEST(Files, RefuseWhatIsNoRegularFileWithoutWaiting) {
    const TemporaryFolder folder;
    for (const auto& path : NoRegularFiles(folder.Path)) {
        EXPECT_THROW(LineReader{path}, std::system_error) << path;
        EXPECT_THROW(Files::LeadingBytes(path, 1), std::system_error) << path;
        EXPECT_FALSE(Files::FileExists(path)) << path;
    }
    EXPECT_TRUE(Files::FileExists(folder.Write("empty", "")));
}
