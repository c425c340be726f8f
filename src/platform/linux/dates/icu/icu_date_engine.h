#pragma once

#include "linux/dates/date_engine.h"
#include "linux/dates/icu/date_settings.h"
#include "linux/dates/icu/icu_calendar.h"
#include "linux/dates/icu/icu_date_formatter.h"

#include <map>
#include <string>

namespace velmo {

/// Dates by ICU.
class IcuDateEngine final : public DateEngine {
public:
    /// `locale` as POSIX names it.
    IcuDateEngine(const std::string& locale, const TimeZoneSetting& timeZone);

    void setTimeZone(const TimeZoneSetting& setting) override;
    const Calendar& calendar() const override { return calendar_; }
    std::unique_ptr<DateFormatter> makeDateFormatter() override;
    std::string formatted(Date date, DateStyle style) override;

private:
    DateSettings settings_;
    IcuCalendar calendar_{settings_};
    std::map<DateStyle, IcuDateFormatter> styles_;
};

}  // namespace velmo
