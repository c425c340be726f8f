#include "text_label.h"

#include "control_layout.h"
#include "macos/desktop/color_from.h"
#include "macos/desktop/font_from.h"
#include "view_node.h"

#include <algorithm>
#include <cmath>

namespace velmo::macos {
namespace {

/// More than any text takes.
constexpr double endless = 1e5;

Font bold(Font font) {
    font.weight = FontWeight::bold;
    return font;
}

}  // namespace

bool TextLabel::isEmpty() const {
    return std::all_of(text_.runs.begin(), text_.runs.end(),
                       [](const TextRun& run) { return run.text.empty(); });
}

void TextLabel::display(const Text& text, const Look& look) {
    if (scale_ != 0 && text == text_ && look == look_)
        return;
    text_ = text;
    look_ = look;
    // Nobody is to be told of a text without words.
    field_->setHidden(isEmpty());
    field_->cell().setWraps(!look.singleLine);
    field_->cell().setLineBreakMode(look.singleLine ? NSLineBreakMode::truncatingTail
                                                    : NSLineBreakMode::wordWrapping);
    field_->setTextColor(colorFrom(look.color.role));
    field_->setAlphaValue(look.color.opacity);
    show(1);
    whole_ = measured(unlimited);
}

void TextLabel::show(double scale) {
    scale_ = scale;
    Font font = look_.font;
    const NSFont full = fontFrom(font);
    if (scale != 1)
        font.size = full.pointSize() * scale;
    field_->setFont(scale == 1 ? full : fontFrom(font));
    if (text_.runs.size() == 1 && !text_.runs.front().isBold)
        field_->setStringValue(NSString::from(text_.runs.front().text));
    else
        field_->setAttributedStringValue(attributed(font));
}

NSAttributedString TextLabel::attributed(const Font& font) const {
    NSMutableAttributedString whole = NSMutableAttributedString::create();
    for (const TextRun& run : text_.runs) {
        const NSMutableDictionary attributes = NSMutableDictionary::create();
        attributes.setObject(fontFrom(run.isBold ? bold(font) : font), fontAttribute.value());
        attributes.setObject(colorFrom(look_.color.role), colorAttribute.value());
        whole.append(NSAttributedString::with(NSString::from(run.text), attributes));
    }
    return whole;
}

Size TextLabel::measured(double width) const {
    const CGSize cell = field_->cell().cellSizeForBounds({{0, 0}, {std::min(width, endless), endless}});
    const CGSize seen = field_->alignmentRectForFrame({{0, 0}, cell}).size;
    return {std::ceil(seen.width), std::ceil(seen.height)};
}

Size TextLabel::sizeThatFits(double width) const {
    if (whole_.width <= width)
        return whole_;
    return look_.singleLine ? Size{width, whole_.height} : measured(width);
}

void TextLabel::place(const Rect& area) {
    double scale = 1;
    if (look_.singleLine && area.width < whole_.width)
        scale = std::max(area.width / whole_.width, look_.singleLine->minimumScale);
    if (scale != scale_)
        show(scale);
    const double height = scale == 1 ? area.height : std::min(measured(unlimited).height, area.height);
    placeAligned(*field_, {area.x, area.y + (area.height - height) / 2, area.width, height});
}

double TextLabel::firstBaseline() const {
    return std::ceil(fontFrom(look_.font).ascender());
}

TextLabel::Look lookIn(const ViewContext& context) {
    return {context.font, context.color, context.singleLine};
}

}  // namespace velmo::macos
