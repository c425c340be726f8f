#pragma once

#include "macos/foundation/ns_array.h"
#include "macos/foundation/ns_error.h"
#include "macos/objc/block.h"

namespace velmo::macos {

class SCShareableContent : public ClassOf<SCShareableContent, "SCShareableContent", NSObject> {
public:
    using Completion = Block<void(SCShareableContent, NSError)>;

    /// The completion is called on any thread, without content where that fails.
    static void get(bool excludesDesktopWindows, bool onScreenWindowsOnly, const Completion& completion);

    /// Of `SCWindow`.
    NSArray windows() const { return send<NSArray, "windows">(); }
};

// A completion has the class as an argument, which has to be known before its code is made.
inline void SCShareableContent::get(bool excludesDesktopWindows, bool onScreenWindowsOnly,
                                    const Completion& completion) {
    sendToClass<void, "getShareableContentExcludingDesktopWindows:onScreenWindowsOnly:completionHandler:">(
        excludesDesktopWindows, onScreenWindowsOnly, completion);
}

}  // namespace velmo::macos
