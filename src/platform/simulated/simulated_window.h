#pragma once

#include "window.h"

#include <vector>

namespace velmo {

class SimulatedWindows;

class SimulatedWindow : public Window {
public:
    SimulatedWindow(SimulatedWindows& windows, View content);
    ~SimulatedWindow() override;
    SimulatedWindow(const SimulatedWindow&) = delete;
    SimulatedWindow& operator=(const SimulatedWindow&) = delete;

    void setContent(const View& content) override {
        content_ = content;
        calls_.emplace_back("setContent");
    }
    void setTitle(const std::string& title) override { title_ = title; }
    void setStyleMask(std::uint64_t mask) override { styleMask_ = mask; }
    void setReleasedWhenClosed(bool released) override { isReleasedWhenClosed_ = released; }
    void center() override { calls_.emplace_back("center"); }
    void setFrameAutosaveName(const std::string& name) override {
        frameAutosaveName_ = name;
        calls_.emplace_back("setFrameAutosaveName");
    }
    void makeKeyAndOrderFront() override {
        isVisible_ = true;
        calls_.emplace_back("makeKeyAndOrderFront");
    }
    bool isVisible() const override { return isVisible_; }
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }

    const View& content() const { return content_; }
    const std::string& title() const { return title_; }
    std::uint64_t styleMask() const { return styleMask_; }
    bool isReleasedWhenClosed() const { return isReleasedWhenClosed_; }
    const std::string& frameAutosaveName() const { return frameAutosaveName_; }
    /// What placed and showed the window and replaced its content, in order.
    const std::vector<std::string>& calls() const { return calls_; }
    /// The user closes the window.
    void close();

private:
    SimulatedWindows& windows_;
    View content_;
    std::string title_;
    std::uint64_t styleMask_ = 0;
    bool isReleasedWhenClosed_ = true;
    std::string frameAutosaveName_;
    bool isVisible_ = false;
    std::vector<std::string> calls_;
    std::function<void()> onClose_;
};

}  // namespace velmo
