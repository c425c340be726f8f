#pragma once

#include "ns_object.h"
#include "run_loop.h"

namespace velmo::macos {

class NSDate : public ClassOf<NSDate, "NSDate", NSObject> {
public:
    static NSDate with(Date date) { return sendToClass<NSDate, "dateWithTimeIntervalSince1970:">(date); }

    Date date() const { return send<double, "timeIntervalSince1970">(); }
};

}  // namespace velmo::macos
