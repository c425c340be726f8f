#pragma once

#include "macos_calendar.h"
#include "macos_date_formatter.h"
#include "time_zone_reset.h"

#include <map>
#include <memory>
#include <string>

namespace velmo::macos {

class MacosDates : public Dates {
public:
    const Calendar& currentCalendar() const override { return calendar_; }
    std::unique_ptr<DateFormatter> makeDateFormatter() override;
    std::string formatted(Date date, DateStyle style) const override;
    std::unique_ptr<NotificationObserver> observeTimeZone(std::function<void()> handler) override;

private:
    struct KeptFormatter {
        MacosDateFormatter formatter;
        std::string pattern = {};
    };

    MacosCalendar calendar_;
    /// One for all who observe the time zone, of which each is told.
    std::shared_ptr<TimeZoneReset> timeZoneReset_ = std::make_shared<TimeZoneReset>();
    /// Making one takes longer than using it.
    mutable std::map<DateStyle, KeptFormatter> formatters_;
};

}  // namespace velmo::macos
