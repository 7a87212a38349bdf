#include <cstddef>
#include <cstdint>

#include "fuzz/Check.h"
#include "model/RuleJson.h"

// A list that could be read is written so that it reads as the same list.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const auto rules = kestrelbay::decodeRules(text)) {
        const QByteArray written = kestrelbay::encodeRules(*rules);
        const auto again = kestrelbay::decodeRules(written);
        check(again.has_value());
        check(*again == *rules);
        check(kestrelbay::encodeRules(*again) == written);
    }
    return 0;
}
