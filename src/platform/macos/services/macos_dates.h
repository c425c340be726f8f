#pragma once

#include "macos_calendar.h"

#include <memory>

namespace velmo::macos {

class MacosDates : public Dates {
public:
    const Calendar& currentCalendar() const override { return calendar_; }
    std::unique_ptr<DateFormatter> makeDateFormatter() override;
    std::string formatted(Date date, DateStyle style) const override;
    std::unique_ptr<NotificationObserver> observeTimeZone(std::function<void()> handler) override;

private:
    MacosCalendar calendar_;
};

}  // namespace velmo::macos
