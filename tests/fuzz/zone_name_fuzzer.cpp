#include "bytes.h"
#include "linux/dates/icu/system_time_zone.h"
#include "require.h"

#include <cmath>

/// The zone's name, in the environment or a file of the system: clocks show a time that some clock shows.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    constexpr double millisecondsPerDay = 86'400'000;
    fuzz::Bytes bytes(data, size);
    const auto time = static_cast<double>(static_cast<std::int64_t>(bytes.number(8)) >> bytes.below(64));
    TimeZoneSetting setting;
    setting.name = bytes.text();
    const auto zone = makeTimeZone(setting);
    for (const double moment : {time, 0.0, 1.8e12}) {
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t standard = 0;
        std::int32_t savings = 0;
        zone->getOffset(moment, false, standard, savings, status);
        fuzz::require(U_SUCCESS(status) && std::abs(standard + savings) < millisecondsPerDay);
    }
    return 0;
}
