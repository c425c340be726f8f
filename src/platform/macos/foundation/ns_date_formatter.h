#pragma once

#include "ns_array.h"
#include "ns_date.h"
#include "ns_locale.h"
#include "ns_time_zone.h"

namespace velmo::macos {

class NSDateFormatter : public ClassOf<NSDateFormatter, "NSDateFormatter", NSObject> {
public:
    static NSDateFormatter create() { return make<"init">(); }
    /// The locale's pattern that shows the fields of the template. None where it has none.
    static NSString formatFromTemplate(const NSString& fields, const NSLocale& locale) {
        return sendToClass<NSString, "dateFormatFromTemplate:options:locale:">(fields, NSUInteger{0}, locale);
    }

    void setDateFormat(const NSString& pattern) const { send<void, "setDateFormat:">(pattern); }
    void setLocale(const NSLocale& locale) const { send<void, "setLocale:">(locale); }
    void setTimeZone(const NSTimeZone& zone) const { send<void, "setTimeZone:">(zone); }
    NSString string(const NSDate& date) const { return send<NSString, "stringFromDate:">(date); }
};

}  // namespace velmo::macos
