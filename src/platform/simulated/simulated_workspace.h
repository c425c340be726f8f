#pragma once

#include "workspace.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace velmo {

class SimulatedWorkspace : public Workspace {
public:
    void open(const std::string& address) override {
        opened_.push_back(address);
        if (onOpen_)
            onOpen_();
    }

    /// Called whenever something is opened, at that moment.
    void setOnOpen(std::function<void()> handler) { onOpen_ = std::move(handler); }
    const std::vector<std::string>& opened() const { return opened_; }

private:
    std::vector<std::string> opened_;
    std::function<void()> onOpen_;
};

}  // namespace velmo
