/// Settings files and scenes: whatever the bytes are, they are read the same in pieces and at once,
/// what was read can be written and read again, and every control gets a value of its scale.

#include "check.h"
#include "mixer/adjustable.h"
#include "mixer/routing.h"
#include "mixer/rules.h"
#include "storage/store.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace storage;

namespace {

Entries readInPieces(const QByteArray &text, int piece, bool &isDamaged)
{
    IniReader reader;
    for (int at = 0; at < text.size(); at += piece)
        if (!reader.read(text.constData() + at, std::min(piece, text.size() - at))) break;
    reader.finish();
    isDamaged = reader.isDamaged();
    return reader.entries();
}

void checkPosition(const Values &values, const mixer::Adjustable &a)
{
    const auto [low, high] = std::minmax({mixer::lowestPosition(a), mixer::highestPosition(a)});
    const int position = mixer::storedPosition(values, a);
    FUZZ_CHECK(position >= low && position <= high);
}

void checkControls(const Values &values)
{
    for (const mixer::StripId &strip : mixer::allStrips()) {
        checkPosition(values, mixer::faderOf(strip));
        if (strip.isMaster()) continue;
        for (int i = 0; i < mixer::parameterCount; ++i)
            checkPosition(values, mixer::knobOf(strip, static_cast<mixer::ParameterId>(i)));
    }
    for (int input = 1; input <= mixer::trackCount; ++input)
        checkPosition(values, mixer::panOf(input));
    for (int output = 1; output <= mixer::lineOutCount; ++output) {
        const int source = mixer::lineOutSource(values, output);
        FUZZ_CHECK(source >= 0 && source < mixer::sourceCount);
    }
}

/// A recall of the values gives a state that another recall of them does not change.
void checkRecall(const Values &scene)
{
    Store store;
    for (int time = 0; time < 2; ++time) {
        Transaction transaction(store);
        mixer::recall(transaction, scene, {});
        transaction.commit();
        checkControls(store.values());
    }
    FUZZ_CHECK(mixer::recallChanges(store.values(), scene).empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) return 0;
    const QByteArray text(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size) - 1);
    bool isDamaged = false;
    const Entries entries = readInPieces(text, text.size() + 1, isDamaged);
    bool isDamagedInPieces = false;
    FUZZ_CHECK(readInPieces(text, data[0] + 1, isDamagedInPieces) == entries);
    FUZZ_CHECK(isDamagedInPieces == isDamaged);

    bool isWrittenDamaged = true;
    const QByteArray written = toIni(entries);
    FUZZ_CHECK(readInPieces(written, written.size() + 1, isWrittenDamaged) == entries);
    for (const QByteArray &value : entries) {
        const auto decoded = decodeText(value);
        if (decoded) FUZZ_CHECK(decodeText(encodeText(*decoded)) == decoded);
    }

    // Reading all controls takes a hundred times as long as reading the file.
    if (data[0] % 8 == 0) checkControls(Values(entries));
    if (data[0] % 32 == 0) checkRecall(Values(entries));
    return 0;
}
