#pragma once

#include "dates.h"
#include "macos/foundation/ns_date_formatter.h"

namespace velmo::macos {

class MacosDateFormatter : public DateFormatter {
public:
    MacosDateFormatter();

    void setDateFormat(const std::string& pattern) override;
    std::optional<std::string> string(Date date) const override;

private:
    NSDateFormatter formatter_ = NSDateFormatter::create();
    mutable NSTimeZone zone_;
};

}  // namespace velmo::macos
