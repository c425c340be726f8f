#include "linux/dates/icu/icu_date_engine.h"

extern "C" __attribute__((visibility("default"))) velmo::DateEngine* velmoMakeDateEngine(
    const char* locale, const velmo::TimeZoneSetting* timeZone) {
    return new velmo::IcuDateEngine(locale, *timeZone);
}
