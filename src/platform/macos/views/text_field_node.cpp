#include "text_field_node.h"

#include "control_layout.h"
#include "leaf_nodes.h"
#include "macos/desktop/font_from.h"
#include "report.h"

#include <algorithm>

namespace velmo::macos {
namespace {

constexpr double usualWidth = 220;

}  // namespace

TextFieldNode::TextFieldNode(const NSView& surface)
    : RowNode(surface), field_(surface, NSTextField::create()) {
    field_->setDelegate(delegate_.object());
    field_->cell().setUsesSingleLineMode(true);
    field_->cell().setScrollable(true);
}

TextFieldNode::~TextFieldNode() {
    field_->setDelegate(Object());
}

void TextFieldNode::edited(const NSNotification& /*notification*/) {
    report(content<TextField>().onEdit, reassert_, field_->stringValue().text());
}

void TextFieldNode::apply(const ViewContext& context) {
    const auto& field = content<TextField>();
    reassert_ = context.reassert;
    // The title keeps the font of its neighbours; what is typed has the field's own.
    ViewContext titleContext = context;
    titleContext.font = {};
    showTitleOfNamed(field.title, titleContext);
    describe(*field_, context.accessibilityLabel.empty() ? field.title : context.accessibilityLabel,
             context.help);
    // Either would disturb whoever is typing.
    if (field_->isEnabled() != context.isEnabled)
        field_->setEnabled(context.isEnabled);
    if (const NSFont font = fontFrom(context.font); !font.isEqual(field_->font()))
        field_->setFont(font);
    show(field.text);
}

void TextFieldNode::show(const std::string& text) const {
    if (field_->stringValue().text() == text)
        return;
    // A new text would put the caret to its end.
    const NSText editor = field_->currentEditor();
    const NSRange caret = editor.selectedRange();
    const NSString shown = NSString::from(text);
    field_->setStringValue(shown);
    if (editor)
        editor.setSelectedRange({std::min(caret.location, shown.length()), 0});
}

Size TextFieldNode::controlSize(double width) const {
    return {std::min(usualWidth, width), naturalSize(*field_).height};
}

void TextFieldNode::placeControl(const Rect& area) {
    placeAligned(*field_, area);
}

}  // namespace velmo::macos
