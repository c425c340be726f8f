#pragma once

#include "row_node.h"

#include <functional>
#include <memory>

namespace velmo::macos {

/// Either a button that shows the choice or a group of options.
class PickerNode : public RowNode {
public:
    explicit PickerNode(const NSView& surface);
    ~PickerNode() override;

protected:
    void apply(const ViewContext& context) override;
    Size controlSize(double width) const override;
    void placeControl(const Rect& area) override;

private:
    class Menu;
    class Options;

    void choose(std::size_t index);

    // One of the two.

    std::unique_ptr<Menu> menu_;
    std::unique_ptr<Options> options_;
    std::function<void()> reassert_;
};

}  // namespace velmo::macos
