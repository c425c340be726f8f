#pragma once

#include "dates.h"
#include "linux/dates/icu/date_settings.h"

#include <unicode/smpdtfmt.h>

#include <memory>
#include <optional>
#include <string>

namespace velmo {

/// Writes dates by a pattern, in the locale's language, calendar and digits.
class IcuDateFormatter : public DateFormatter {
public:
    explicit IcuDateFormatter(const DateSettings& settings) : settings_(settings) {}

    void setDateFormat(const std::string& pattern) override;
    std::optional<std::string> string(Date date) const override;

private:
    void prepare() const;
    std::optional<std::string> written(Date date) const;
    /// Whether minutes begin there when they do in the world's time.
    bool hasWholeMinutes(Date date) const;

    const DateSettings& settings_;
    std::string pattern_;
    mutable std::unique_ptr<icu::SimpleDateFormat> format_;
    mutable int generation_ = -1;
    /// A clock asks each second for what mostly changes each minute.
    struct WrittenMinute {
        double minute = 0;
        std::optional<std::string> text;
    };
    mutable std::optional<WrittenMinute> last_;
};

}  // namespace velmo
