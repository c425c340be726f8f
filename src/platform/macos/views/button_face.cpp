#include "button_face.h"

#include "image_label.h"

#include <algorithm>

namespace velmo::macos {

ButtonFace buttonFace(const View& label, const ViewContext& context) {
    const ViewContext own = context.with(label.modifiers);
    ButtonFace face{.font = own.font, .color = own.color};
    if (const auto* text = std::get_if<Text>(&label.content)) {
        for (const TextRun& run : text->runs)
            face.title += run.text;
    } else if (const auto* image = std::get_if<ImageView>(&label.content)) {
        face.image = imageIn(image->image, own);
    } else if (!label.children.empty()) {
        face = buttonFace(label.children.front(), own);
    }
    for (const Modifier& modifier : label.modifiers) {
        if (const auto* frame = std::get_if<Frame>(&modifier))
            face.minWidth = std::max(face.minWidth, frame->width.value_or(frame->minWidth.value_or(0)));
    }
    return face;
}

}  // namespace velmo::macos
