#include "described_text.h"

namespace velmo {

std::string describedText(const View& view) {
    std::string result;
    if (const auto* text = std::get_if<Text>(&view.content)) {
        for (const auto& run : text->runs)
            result += run.text;
    } else if (const auto* image = std::get_if<ImageView>(&view.content)) {
        result = image->image.accessibilityDescription;
    }
    for (const auto& child : view.children) {
        if (!result.empty())
            break;
        result = describedText(child);
    }
    return result;
}

}  // namespace velmo
