#include "described_text.h"

namespace velmo {

QString describedText(const View& view) {
    QString result;
    if (const auto* text = std::get_if<Text>(&view.content)) {
        for (const auto& run : text->runs)
            result += QString::fromStdString(run.text);
    } else if (const auto* image = std::get_if<ImageView>(&view.content)) {
        result = QString::fromStdString(image->image.accessibilityDescription);
    }
    for (const auto& child : view.children) {
        if (!result.isEmpty())
            break;
        result = describedText(child);
    }
    return result;
}

}  // namespace velmo
