#pragma once

#include "ns_string.h"

namespace velmo::macos {

class NSNumber : public ClassOf<NSNumber, "NSNumber", NSObject> {
public:
    static NSNumber with(bool value) { return sendToClass<NSNumber, "numberWithBool:">(value); }
    static NSNumber with(double value) { return sendToClass<NSNumber, "numberWithDouble:">(value); }
    static NSNumber with(NSInteger value) { return sendToClass<NSNumber, "numberWithInteger:">(value); }

    bool boolValue() const { return send<bool, "boolValue">(); }
    double doubleValue() const { return send<double, "doubleValue">(); }
    NSInteger integerValue() const { return send<NSInteger, "integerValue">(); }
};

}  // namespace velmo::macos
