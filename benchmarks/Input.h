#pragma once

#include "ledger/KillLedger.h"
#include "platform/Desktop.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Generated input, the same in every run, and the program's logic on a desktop without a screen.
namespace Input {

// Numbers without a visible order.
class Sequence {
public:
    // Below `limit`.
    std::size_t Next(std::size_t limit) {
        State = State * 6364136223846793005U + 1442695040888963407U;
        return (State >> 33) % limit;
    }

private:
    std::uint64_t State = 20040616;
};

// Monster `number`, from 0 to 9,998, and the names of others behind those. Two or three words,
// 7 to 24 characters; no name is another's plural or differs from it by the end of its first word.
std::string MonsterName(std::size_t number);

// Character `number`, from 0 to 98, and others behind those.
std::string CharacterName(std::size_t number);

// Every table full and every cell set; with `step` 2, every second monster and its cells.
std::unique_ptr<KillLedger> FullLedger(int step = 1);

// Whether the two hold the same tallies, names and imported turns.
bool SameTables(const KillLedger& one, const KillLedger& other);

// The bytes of the data file and of the clipboard report that a ledger must come out as. The report
// without its two lines of heading.
std::string DataFileBytes(const KillLedger& ledger);
std::string ReportBody(const KillLedger& ledger);

// A folder of its own in main memory, if the machine has such a file system with room, else among
// the temporary files. Gone at the end with all that is in it.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::filesystem::path Write(const std::string& name, std::string_view bytes) const;

    std::filesystem::path Path;
};

// A started program without its windows. Dialogs are answered with Choice.
struct Stage {
    Stage();

    std::unique_ptr<KillLedger> Store = std::make_unique<KillLedger>();
    KillLedger& Ledger = *Store;
    Slaying_Tallies Window;
    frmAbout About;
    std::filesystem::path Choice;
    int Messages = 0;
    std::function<void(std::string_view)> OnClipboard;
    Desktop Services;
};

} // namespace Input
