#include "linux/qt/views/button_node.h"
#include "linux/qt/views/control_nodes.h"
#include "linux/qt/views/form_nodes.h"
#include "linux/qt/views/leaf_nodes.h"
#include "linux/qt/views/stack_nodes.h"
#include "linux/qt/views/tab_view_node.h"
#include "make_node.h"
#include "view_node.h"

namespace velmo {

std::unique_ptr<ViewNode> makeViewNode(const ViewContent& content, QWidget& surface) {
    return makeNode<ViewNode, Shows<EmptyView, EmptyNode>, Shows<Text, TextNode>, Shows<ImageView, ImageNode>,
                    Shows<Divider, DividerNode>, Shows<Spacer, SpacerNode>, Shows<HStack, HStackNode>,
                    Shows<VStack, VStackNode>, Shows<Grid, GridNode>, Shows<Label, LabelNode>,
                    Shows<Button, ButtonNode>, Shows<Toggle, ToggleNode>, Shows<Picker, PickerNode>,
                    Shows<Slider, SliderNode>, Shows<TextField, TextFieldNode>,
                    Shows<LabeledContent, LabeledContentNode>, Shows<Form, FormNode>,
                    Shows<Section, SectionNode>, Shows<TabView, TabViewNode>>(content, surface);
}

}  // namespace velmo
