#include "fingerprint/TurnLedger.h"

namespace Main {

int FindTurnRecord(const KillLedger& ledger, std::int32_t fileLength,
                   std::string_view fingerprint) {
    int found = 0;
    for (int i = 1; i <= MaxTurns; ++i) {
        if (ledger.TurnFileLengths[i] == fileLength && ledger.TurnHashes[i] == fingerprint) {
            found = i;
        }
    }
    return found;
}

} // namespace Main
