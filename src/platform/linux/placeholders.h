#pragma once

#include "dates.h"
#include "global_preferences.h"
#include "login_service.h"
#include "session.h"

namespace velmo::placeholder {

// Each goes away with the service that takes its place.

class NoCalendar : public Calendar {
public:
    std::optional<DateInterval> dateInterval(CalendarUnit /*unit*/, Date /*date*/) const override {
        return {};
    }
    std::optional<int> dayCount(CalendarUnit /*in*/, Date /*date*/) const override { return {}; }
    std::optional<int> ordinalityOfDay(CalendarUnit /*in*/, Date /*date*/) const override { return {}; }
    int component(CalendarUnit /*unit*/, Date /*date*/) const override { return 0; }
    std::optional<Date> dateByAdding(CalendarUnit /*unit*/, int /*value*/, Date /*date*/) const override {
        return {};
    }
    int firstWeekday() const override { return 1; }
    std::vector<std::string> veryShortStandaloneWeekdaySymbols() const override { return {}; }
    bool isSameDay(Date /*one*/, Date /*other*/) const override { return false; }
    bool isSameMonth(Date /*one*/, Date /*other*/) const override { return false; }
    bool isInWeekend(Date /*date*/) const override { return false; }
};

class NoFormatter : public DateFormatter {
public:
    void setDateFormat(const std::string& /*pattern*/) override {}
    std::optional<std::string> string(Date /*date*/) const override { return {}; }
};

class NoDates : public Dates {
public:
    const Calendar& currentCalendar() const override { return calendar_; }
    std::unique_ptr<DateFormatter> makeDateFormatter() override { return std::make_unique<NoFormatter>(); }
    std::string formatted(Date /*date*/, DateStyle /*style*/) const override { return {}; }
    std::unique_ptr<NotificationObserver> observeTimeZone(std::function<void()> /*handler*/) override {
        return {};
    }

private:
    NoCalendar calendar_;
};

class NoLogin : public LoginService {
public:
    LoginServiceStatus status() const override { return LoginServiceStatus::notFound; }
    std::optional<std::string> registerService() override { return {}; }
    std::optional<std::string> unregisterService() override { return {}; }
};

class NoGlobals : public GlobalPreferences {
public:
    std::optional<Value> value(const std::string& /*key*/) const override { return {}; }
    void setValue(const std::string& /*key*/, std::optional<std::int64_t> /*value*/) override {}
    void synchronize() override {}
};

class NoSession : public Session {
public:
    void requestLogOut() override {}
};

}  // namespace velmo::placeholder
