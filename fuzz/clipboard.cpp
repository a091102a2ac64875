/// Settings of a strip from the clipboard, and the files of presets: foreign text is refused, and
/// what is taken can be written and read again.

#include "check.h"
#include "mixer/presets.h"
#include "mixer/stripclip.h"

#include <cstddef>
#include <cstdint>

using namespace mixer;

namespace {

void checkClip(const QByteArray &text)
{
    const std::optional<StripClip> clip = StripClip::fromJson(text);
    if (!clip) return;
    const QByteArray json = clip->json();
    const std::optional<StripClip> again = StripClip::fromJson(json);
    FUZZ_CHECK(again && again->json() == json);
    storage::Store store;
    for (const StripId &strip : {track(1), pair(3), master()}) {
        Transaction transaction(store);
        clip->paste(transaction, strip, ClipPart::All);
        transaction.commit();
    }
    const Values pasted = store.values();
    Transaction transaction(store);
    again->paste(transaction, track(1), ClipPart::All);
    transaction.commit();
    FUZZ_CHECK(store.values() == pasted);
}

void checkPreset(const QByteArray &text)
{
    const std::optional<UserPreset> preset = presetFrom(text, 1);
    if (!preset) return;
    const QByteArray json = toJson(*preset);
    const std::optional<UserPreset> again = presetFrom(json, 1);
    FUZZ_CHECK(again && again->name == preset->name && toJson(*again) == json);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    checkClip(text);
    checkPreset(text);
    return 0;
}
