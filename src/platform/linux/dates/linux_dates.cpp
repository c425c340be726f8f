#include "linux_dates.h"

#include "linux/module/module.h"

#include <cstdlib>
#include <utility>

namespace velmo {

namespace {

constexpr const char* datesModule = "velmo-dates.so";
constexpr const char* timeZoneVariable = "TZ";

}  // namespace

/// Begins to need the engine with the first date.
class LinuxDates::Formatter : public DateFormatter {
public:
    explicit Formatter(const LinuxDates& dates) : dates_(dates) {}

    void setDateFormat(const std::string& pattern) override {
        pattern_ = pattern;
        if (formatter_)
            formatter_->setDateFormat(pattern);
    }

    std::optional<std::string> string(Date date) const override {
        if (!formatter_) {
            auto* engine = dates_.engine();
            if (!engine)
                return std::nullopt;
            formatter_ = engine->makeDateFormatter();
            formatter_->setDateFormat(pattern_);
        }
        return formatter_->string(date);
    }

private:
    const LinuxDates& dates_;
    std::string pattern_;
    mutable std::unique_ptr<DateFormatter> formatter_;
};

class LinuxDates::Observer : public NotificationObserver {
public:
    Observer(Registration registration, std::function<void()> onEnd)
        : registration_(std::move(registration)), onEnd_(std::move(onEnd)) {}
    ~Observer() override {
        registration_ = {};
        onEnd_();
    }
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

private:
    Registration registration_;
    std::function<void()> onEnd_;
};

std::string dateLocaleFromEnvironment() {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value)
            return value;
    }
    return "C";
}

LinuxDates::LinuxDates(EventLoop& loop, TimeZoneFiles files)
    : loop_(loop),
      files_(std::move(files)),
      timeZone_(readTimeZoneSetting(std::getenv(timeZoneVariable), files_)) {}

LinuxDates::~LinuxDates() = default;

DateEngine* LinuxDates::engine() const {
    if (std::exchange(tried_, true))
        return engine_.get();
    if (void* function = moduleFunction(datesModule, dateEngineFunctionName)) {
        const auto locale = dateLocaleFromEnvironment();
        engine_.reset(reinterpret_cast<MakeDateEngine>(function)(locale.c_str(), &timeZone_));
    }
    return engine_.get();
}

const Calendar& LinuxDates::currentCalendar() const {
    const auto* loaded = engine();
    return loaded ? loaded->calendar() : unknownCalendar_;
}

std::unique_ptr<DateFormatter> LinuxDates::makeDateFormatter() {
    return std::make_unique<Formatter>(*this);
}

std::string LinuxDates::formatted(Date date, DateStyle style) const {
    auto* loaded = engine();
    return loaded ? loaded->formatted(date, style) : std::string();
}

std::unique_ptr<NotificationObserver> LinuxDates::observeTimeZone(std::function<void()> handler) {
    const char* variable = std::getenv(timeZoneVariable);
    // What TZ says holds for as long as the program runs.
    if (!watch_ && !(variable && overridesSystemTimeZone(variable, files_))) {
        watch_ = std::make_unique<TimeZoneWatch>(loop_, files_, [this] { readTimeZone(); });
        readTimeZone();
    }
    ++observerCount_;
    return std::make_unique<Observer>(observers_.add(std::move(handler)), [this] { observerEnded(); });
}

void LinuxDates::readTimeZone() {
    auto setting = readTimeZoneSetting(std::getenv(timeZoneVariable), files_);
    if (setting == timeZone_)
        return;
    timeZone_ = std::move(setting);
    if (engine_)
        engine_->setTimeZone(timeZone_);
    observers_.notify();
}

void LinuxDates::observerEnded() {
    if (--observerCount_ == 0)
        watch_.reset();
}

}  // namespace velmo
