#include "bytes.h"
#include "linux/dates/icu/icu_date_engine.h"
#include "linux/dates/icu/posix_locale.h"
#include "linux/dates/icu/system_time_zone.h"

#include <unicode/smpdtfmt.h>

#include <cmath>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>

namespace {

using namespace velmo;

/// A formatter as a clock has it for years, beside one of ICU's that keeps nothing.
struct Place {
    Place(const std::string& locale, const TimeZoneSetting& zone) : engine(locale, zone) {
        UErrorCode status = U_ZERO_ERROR;
        forgetful = std::make_unique<icu::SimpleDateFormat>("y", localeFromPosixName(locale), status);
        if (U_FAILURE(status))
            std::abort();
        forgetful->adoptTimeZone(makeTimeZone(zone).release());
    }

    std::string written(Date date) const {
        icu::UnicodeString text;
        std::string result;
        forgetful->format(toUDate(date), text);
        return text.toUTF8String(result);
    }

    IcuDateEngine engine;
    std::unique_ptr<DateFormatter> formatter = engine.makeDateFormatter();
    std::unique_ptr<icu::SimpleDateFormat> forgetful;
};

}  // namespace

/// Whatever was written before, a date reads as it does without that.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Place places[] = {{"en_US.UTF-8", {}},
                             {"ar_EG.UTF-8", {.rules = "EET-2EEST,M4.5.5/0,M10.5.4/24"}},
                             {"th_TH.UTF-8", {.rules = "<+063040>-6:30:40"}}};
    constexpr double step = 0.25;
    fuzz::Bytes bytes(data, size);
    auto& place = places[bytes.below(std::size(places))];
    const auto first = static_cast<Date>(static_cast<std::int64_t>(bytes.number(8)) >> bytes.below(64));
    const auto second = first + step * static_cast<double>(bytes.number(2)) - step * (1 << 14);
    const auto pattern = bytes.text();
    place.formatter->setDateFormat(pattern);
    place.forgetful->applyPattern(icu::UnicodeString::fromUTF8(pattern));
    for (const auto date : {first, second, first}) {
        const auto text = place.formatter->string(date);
        if (text && *text != place.written(date))
            std::abort();
    }
    return 0;
}
