#pragma once

#include "ns_string.h"

namespace velmo::macos {

class NSURL : public ClassOf<NSURL, "NSURL", NSObject> {
public:
    /// None where the text is no address.
    static NSURL with(const NSString& text) { return sendToClass<NSURL, "URLWithString:">(text); }
};

}  // namespace velmo::macos
