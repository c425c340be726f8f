#include "button_node.h"
#include "control_nodes.h"
#include "form_nodes.h"
#include "leaf_nodes.h"
#include "stack_nodes.h"
#include "tab_view_node.h"
#include "text_field_node.h"

namespace velmo::macos {
namespace {

template <typename Content>
struct NodeOf;
template <>
struct NodeOf<EmptyView> {
    using Type = EmptyNode;
};
template <>
struct NodeOf<Text> {
    using Type = TextNode;
};
template <>
struct NodeOf<ImageView> {
    using Type = ImageNode;
};
template <>
struct NodeOf<Divider> {
    using Type = DividerNode;
};
template <>
struct NodeOf<Spacer> {
    using Type = SpacerNode;
};
template <>
struct NodeOf<HStack> {
    using Type = HStackNode;
};
template <>
struct NodeOf<VStack> {
    using Type = VStackNode;
};
template <>
struct NodeOf<Grid> {
    using Type = GridNode;
};
template <>
struct NodeOf<Label> {
    using Type = LabelNode;
};
template <>
struct NodeOf<Button> {
    using Type = ButtonNode;
};
template <>
struct NodeOf<Toggle> {
    using Type = ToggleNode;
};
template <>
struct NodeOf<Picker> {
    using Type = PickerNode;
};
template <>
struct NodeOf<Slider> {
    using Type = SliderNode;
};
template <>
struct NodeOf<TextField> {
    using Type = TextFieldNode;
};
template <>
struct NodeOf<LabeledContent> {
    using Type = LabeledContentNode;
};
template <>
struct NodeOf<Form> {
    using Type = FormNode;
};
template <>
struct NodeOf<Section> {
    using Type = SectionNode;
};
template <>
struct NodeOf<TabView> {
    using Type = TabViewNode;
};

}  // namespace

std::unique_ptr<ViewNode> makeViewNode(const ViewContent& content, const NSView& surface) {
    return std::visit(
        [&]<typename Content>(const Content& /*content*/) -> std::unique_ptr<ViewNode> {
            return std::make_unique<typename NodeOf<Content>::Type>(surface);
        },
        content);
}

}  // namespace velmo::macos
