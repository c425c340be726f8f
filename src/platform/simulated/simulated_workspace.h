#pragma once

#include "workspace.h"

#include <vector>

namespace velmo {

class SimulatedWorkspace : public Workspace {
public:
    void open(const std::string& address) override { opened_.push_back(address); }

    const std::vector<std::string>& opened() const { return opened_; }

private:
    std::vector<std::string> opened_;
};

}  // namespace velmo
