#pragma once

#include "macos/appkit/ns_text_field.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/objc/instance.h"
#include "placed.h"
#include "row_node.h"

namespace velmo::macos {

class TextFieldNode : public RowNode {
public:
    explicit TextFieldNode(const NSView& surface);
    ~TextFieldNode() override;

protected:
    void apply(const ViewContext& context) override;
    Size controlSize(double width) const override;
    void placeControl(const Rect& area) override;

private:
    void edited(const NSNotification& notification);
    void show(const std::string& text) const;

    using Class = Subclass<TextFieldNode, "VelmoTextFieldDelegate", NSObject,
                           Method<"controlTextDidChange:", &TextFieldNode::edited, "NSTextFieldDelegate">>;

    Placed<NSTextField> field_;
    std::function<void()> reassert_;
    Instance<TextFieldNode, Class, NSObject> delegate_{*this};
};

}  // namespace velmo::macos
