#include "macos_workspace.h"

#include "macos/appkit/ns_workspace.h"

namespace velmo::macos {

void MacosWorkspace::open(const std::string& address) {
    if (const NSURL url = NSURL::with(NSString::from(address)))
        NSWorkspace::shared().open(url);
}

}  // namespace velmo::macos
