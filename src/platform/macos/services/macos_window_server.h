#pragma once

#include "window_server.h"

namespace velmo::macos {

class MacosWindowServer : public WindowServer {
public:
    std::optional<std::vector<WindowListEntry>> windowList(WindowListOption option) const override;
};

}  // namespace velmo::macos
