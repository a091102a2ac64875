/// Exchange files: a file is refused with a sentence, or gives scenes that can be written and read
/// again.

#include "storage/exchange.h"

#include "check.h"

#include <cstddef>
#include <cstdint>

using namespace storage;

namespace {

bool areEqual(const std::vector<ExchangeScene> &a, const std::vector<ExchangeScene> &b)
{
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].slot != b[i].slot || a[i].name != b[i].name || !(a[i].values == b[i].values))
            return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Exchange exchange =
        fromExchange(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    FUZZ_CHECK(exchange.problem.isEmpty() != exchange.scenes.empty());
    for (const ExchangeScene &scene : exchange.scenes) {
        FUZZ_CHECK(scene.slot >= 0 && scene.slot <= 10);
        FUZZ_CHECK(scene.slot != 0 || exchange.scenes.size() == 1);
        FUZZ_CHECK(exchangeable(scene.values) == scene.values);
    }
    if (exchange.scenes.empty()) return 0;
    const Exchange again = fromExchange(toExchange(exchange.scenes, QStringLiteral("4.00 0064")));
    FUZZ_CHECK(again.problem.isEmpty() && again.leftOut.isEmpty());
    FUZZ_CHECK(areEqual(again.scenes, exchange.scenes));
    return 0;
}
