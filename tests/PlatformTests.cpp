#include "ScriptedDesktop.h"
#include "System.h"
#include "fingerprint/TurnLedger.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "text/Failure.h"

#include <numeric>

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
        EXPECT_FALSE(Main::FileExists(path)) << path;
    }
    EXPECT_TRUE(Main::FileExists(folder.Write("empty", "")));
}

TEST(Files, HaveASizeBelowTwoGibibytes) {
    const TemporaryFolder folder;
    const auto file = folder.Write("large", "");
    std::filesystem::resize_file(file, 2147483647);
    EXPECT_EQ(Files::Size(file), 2147483647);
    std::filesystem::resize_file(file, 2147483648);
    EXPECT_THROW(Files::Size(file), Failure);
}

TEST(CodePage, BringsEveryByteBack) {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    const std::u16string unicode = CodePage::ToUnicode(bytes);
    EXPECT_EQ(CodePage::FromUnicode(unicode), bytes);
    // Bytes 0x7E to 0xA1, the unassigned ones as controls.
    EXPECT_EQ(
        unicode.substr(0x7E, 36),
        u"~\x7F\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152"
        u"\x8D\u017D\x8F\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A"
        u"\u0153\x9D\u017E\u0178\u00A0\u00A1");
    EXPECT_EQ(CodePage::FromUnicode(u"a\u0100\U0001F409\u0080\u009F\uFFFFb"), "a?????b");
}
