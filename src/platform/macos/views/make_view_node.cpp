#include "button_node.h"
#include "control_nodes.h"
#include "form_nodes.h"
#include "leaf_nodes.h"
#include "make_node.h"
#include "picker_node.h"
#include "stack_nodes.h"
#include "tab_view_node.h"
#include "text_field_node.h"

namespace velmo::macos {

std::unique_ptr<ViewNode> makeViewNode(const ViewContent& content, const NSView& surface) {
    return makeNode<ViewNode, Shows<EmptyView, EmptyNode>, Shows<Text, TextNode>, Shows<ImageView, ImageNode>,
                    Shows<Divider, DividerNode>, Shows<Spacer, SpacerNode>, Shows<HStack, HStackNode>,
                    Shows<VStack, VStackNode>, Shows<Grid, GridNode>, Shows<Label, LabelNode>,
                    Shows<Button, ButtonNode>, Shows<Toggle, ToggleNode>, Shows<Picker, PickerNode>,
                    Shows<Slider, SliderNode>, Shows<TextField, TextFieldNode>,
                    Shows<LabeledContent, LabeledContentNode>, Shows<Form, FormNode>,
                    Shows<Section, SectionNode>, Shows<TabView, TabViewNode>>(content, surface);
}

}  // namespace velmo::macos
