#pragma once

#include "macos/foundation/ns_error.h"
#include "macos/objc/block.h"
#include "sc_content_filter.h"
#include "sc_stream_configuration.h"

namespace velmo::macos {

class SCScreenshotManager : public ClassOf<SCScreenshotManager, "SCScreenshotManager", NSObject> {
public:
    /// Is given the image, or none where that fails, on any thread.
    using Completion = Block<void(Object, NSError)>;

    static void captureImage(const SCContentFilter& filter, const SCStreamConfiguration& configuration,
                             const Completion& completion) {
        sendToClass<void, "captureImageWithFilter:configuration:completionHandler:">(filter, configuration,
                                                                                     completion);
    }
};

}  // namespace velmo::macos
