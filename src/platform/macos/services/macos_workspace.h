#pragma once

#include "workspace.h"

namespace velmo::macos {

class MacosWorkspace : public Workspace {
public:
    void open(const std::string& address) override;
};

}  // namespace velmo::macos
