#include "bytes.h"
#include "linux/dates/icu/icu_date_engine.h"

#include <iterator>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    static IcuDateEngine engines[] = {{"en_US.UTF-8", {}}, {"ar_EG.UTF-8", {}}, {"th_TH.UTF-8", {}}};
    fuzz::Bytes bytes(data, size);
    auto& engine = engines[bytes.below(std::size(engines))];
    const auto date = static_cast<Date>(static_cast<std::int64_t>(bytes.number(8)) >> bytes.below(64));
    const auto formatter = engine.makeDateFormatter();
    formatter->setDateFormat(bytes.text());
    formatter->string(date);
    return 0;
}
