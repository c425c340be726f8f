#pragma once

#include "ns_dictionary.h"

namespace velmo::macos {

class NSAttributedString : public ClassOf<NSAttributedString, "NSAttributedString", NSObject> {
public:
    static NSAttributedString with(const NSString& text, const NSDictionary& attributes) {
        return make<"initWithString:attributes:">(text, attributes);
    }
};

class NSMutableAttributedString
    : public ClassOf<NSMutableAttributedString, "NSMutableAttributedString", NSAttributedString> {
public:
    static NSMutableAttributedString create() { return make<"init">(); }

    void append(const NSAttributedString& text) const { send<void, "appendAttributedString:">(text); }
};

}  // namespace velmo::macos
