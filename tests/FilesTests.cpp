#include "ScriptedDesktop.h"
#include "System.h"
#include "files/Files.h"
#include "text/Failure.h"

namespace {

// The lines of a file, each followed by '|'.
std::string AllLines(const std::filesystem::path& file) {
    LineReader reader(file);
    std::string lines;
    while (!reader.AtEnd()) {
        lines.append(reader.ReadLine()) += '|';
    }
    EXPECT_THROW(reader.ReadLine(), Failure);
    return lines;
}

} // namespace

TEST(LineReader, EndsLinesAtEveryMark) {
    const TemporaryFolder folder;
    for (const auto& [bytes, lines] : {std::pair("", ""),
                                       {"a", "a|"},
                                       {"a\nb", "a|b|"},
                                       {"a\nb\r", "a|b|"},
                                       {"a\r\nb\nc\rd\r\n", "a|b|c|d|"},
                                       {"\r\r\n\n\r", "||||"},
                                       {"a\n\rb", "a||b|"}}) {
        EXPECT_EQ(AllLines(folder.Write("lines", bytes)), lines) << bytes;
    }
    // At the edge of the buffer, too.
    for (const std::size_t length : {65533U, 65534U, 65535U, 65536U, 65537U, 131071U, 300000U}) {
        for (const std::string mark : {"\r", "\n", "\r\n"}) {
            const std::string line(length, '\0');
            const auto file = folder.Write("lines", line + mark + mark + line + mark + "end");
            EXPECT_TRUE(AllLines(file) == line + "||" + line + "|end|") << length << mark;
        }
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

TEST(Files, HaveASizeBelowTwoGibibytes) {
    const TemporaryFolder folder;
    const auto file = folder.Write("large", "");
    std::filesystem::resize_file(file, 2147483647);
    EXPECT_EQ(LineReader(file).Size(), 2147483647);
    std::filesystem::resize_file(file, 2147483648);
    EXPECT_THROW((void)LineReader(file).Size(), Failure);
}
