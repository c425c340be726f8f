#include "bytes.h"
#include "linux/dates/icu/posix_time_zone.h"
#include "linux/dates/icu/system_time_zone.h"
#include "linux/dates/icu/tzif.h"
#include "require.h"

#include <set>
#include <string>

namespace {

using namespace velmo;

std::set<int> offsetsOf(const TzifZone& zone) {
    std::set<int> offsets;
    for (const auto& type : zone.types)
        offsets.insert(type.offset);
    for (const auto& transition : zone.transitions)
        fuzz::require(transition.type < zone.types.size());
    return offsets;
}

void addRules(const std::string& text, std::set<int>& offsets) {
    const auto rules = parsePosixTimeZone(text);
    if (!rules)
        return;
    offsets.insert(rules->standard.offset);
    if (rules->daylight)
        offsets.insert(rules->daylight->offset);
}

int offsetAt(const icu::TimeZone& zone, double seconds) {
    constexpr int millisecondsPerSecond = 1000;
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t standard = 0;
    std::int32_t savings = 0;
    zone.getOffset(seconds * millisecondsPerSecond, false, standard, savings, status);
    fuzz::require(U_SUCCESS(status) && (standard + savings) % millisecondsPerSecond == 0);
    return (standard + savings) / millisecondsPerSecond;
}

}  // namespace

/// A system's zone, damaged or not: whenever it is, clocks show what the file or the rules say of some time,
/// or the world's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int secondsPerDay = 86400;
    fuzz::Bytes bytes(data, size);
    const auto time = static_cast<double>(static_cast<std::int64_t>(bytes.number(8)) >> bytes.below(64));
    TimeZoneSetting setting;
    setting.rules = bytes.text(bytes.byte());
    setting.file = bytes.text();
    std::set<int> offsets = {0};
    addRules(setting.rules, offsets);
    if (const auto file = parseTzif(setting.file)) {
        offsets.merge(offsetsOf(*file));
        addRules(file->rules, offsets);
    }
    fuzz::require(*offsets.begin() > -secondsPerDay && *offsets.rbegin() < secondsPerDay);
    const auto zone = makeTimeZone(setting);
    for (const double moment : {time, -1e10, 0.0, 1.7e9, 1.8e9, 1e11})
        fuzz::require(offsets.contains(offsetAt(*zone, moment)));
    return 0;
}
