#pragma once

#include "macos/appkit/ns_status_bar.h"
#include "macos_status_bar_button.h"

#include <optional>
#include <string>

namespace velmo::macos {

class MacosStatusItem : public StatusItem {
public:
    explicit MacosStatusItem(double length);
    ~MacosStatusItem() override;
    MacosStatusItem(const MacosStatusItem&) = delete;
    MacosStatusItem& operator=(const MacosStatusItem&) = delete;

    double length() const override { return item_.length(); }
    void setLength(double length) override { item_.setLength(length); }
    void setAutosaveName(const std::string& name) override;
    bool isVisible() const override { return item_.isVisible(); }
    void setVisible(bool visible) override;
    StatusBarButton* button() override { return button_ ? &*button_ : nullptr; }

private:
    NSStatusItem item_;
    std::string autosaveName_;
    std::optional<MacosStatusBarButton> button_;
};

}  // namespace velmo::macos
