#pragma once

#include "panel.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace velmo {

class SimulatedWindows;

class SimulatedPanel : public Panel {
public:
    SimulatedPanel(SimulatedWindows& windows, const PanelConfiguration& configuration, WindowNumber number);
    ~SimulatedPanel() override;
    SimulatedPanel(const SimulatedPanel&) = delete;
    SimulatedPanel& operator=(const SimulatedPanel&) = delete;

    void setContent(const View& content) override {
        content_ = content;
        calls_.emplace_back("setContent");
    }
    Size fittingSize() const override;
    void setFrame(const Rect& frame) override {
        frame_ = frame;
        calls_.emplace_back("setFrame");
    }
    void orderFrontRegardless() override {
        isVisible_ = true;
        calls_.emplace_back("orderFrontRegardless");
    }
    void orderOut() override { isVisible_ = false; }
    bool isVisible() const override { return isVisible_; }
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }
    WindowNumber windowNumber() const override { return number_; }

    /// As the system does by itself.
    void close();

    const PanelConfiguration& configuration() const { return configuration_; }
    const View& content() const { return content_; }
    const Rect& frame() const { return frame_; }
    /// What filled, placed and showed the panel, in order.
    const std::vector<std::string>& calls() const { return calls_; }

private:
    SimulatedWindows& windows_;
    PanelConfiguration configuration_;
    WindowNumber number_;
    View content_;
    Rect frame_;
    std::vector<std::string> calls_;
    std::function<void()> onClose_;
    bool isVisible_ = false;
};

}  // namespace velmo
