#pragma once

#include "control_target.h"
#include "lifetime.h"
#include "macos/appkit/ns_button.h"
#include "plain_button.h"
#include "view_node.h"

#include <memory>

namespace velmo::macos {

/// A button of the system, with a title or a picture.
class ButtonNode : public ViewNode {
public:
    explicit ButtonNode(const NSView& surface);
    ~ButtonNode() override;

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    double contentBaseline(const Size& size) const override;
    NSView lowestContent() const override { return button(); }

private:
    const NSButton& button() const { return plain_ ? plain_->button() : button_; }
    bool isPlain() const { return content<Button>().style == ButtonStyle::plain; }
    void applyFace(const ViewContext& context);
    void applyKeys(const ViewContext& context) const;
    void updateLabel();
    void used();

    NSButton button_ = NSButton::create();
    /// In place of that one.
    std::unique_ptr<PlainButton> plain_;
    /// Of a plain button: one view, or none.
    ViewNodes label_;
    ViewContext labelContext_;
    Font font_;
    double minWidth_ = 0;
    Size size_;
    std::function<void()> reassert_;
    std::unique_ptr<ControlTarget> target_;
};

}  // namespace velmo::macos
