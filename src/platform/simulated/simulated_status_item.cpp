#include "simulated/simulated_status_item.h"

#include "simulated/simulated_status_bar.h"

#include <cmath>

namespace velmo {

namespace {

/// Points at each side of the image.
constexpr double contentMargin = 4;
/// Points for each byte of the title.
constexpr double widthOfCharacter = 7;

double imageWidth(const Image& image) {
    if (const auto* bitmap = std::get_if<Bitmap>(&image.content))
        return bitmap->size.width;
    if (const auto* drawing = std::get_if<Drawing>(&image.content))
        return drawing->size.width;
    constexpr double widthOfSymbol = 1.5;
    return std::get<Symbol>(image.content).pointSize * widthOfSymbol;
}

}  // namespace

SimulatedStatusItem::SimulatedStatusItem(SimulatedStatusBar& statusBar, double length, bool hasButton)
    : statusBar_(statusBar),
      length_(length),
      button_(hasButton ? std::make_unique<SimulatedStatusBarButton>(statusBar, *this) : nullptr) {}

SimulatedStatusItem::~SimulatedStatusItem() {
    statusBar_.note(*this, "gone");
    statusBar_.remove(*this);
}

void SimulatedStatusItem::setLength(double length) {
    statusBar_.note(*this, "length " + std::to_string(std::lround(length)));
    if (length_ == length)
        return;
    length_ = length;
    statusBar_.changed();
}

void SimulatedStatusItem::setAutosaveName(const std::string& name) {
    statusBar_.note(*this, "name " + name);
    autosaveName_ = name;
    statusBar_.rename(*this, name);
}

void SimulatedStatusItem::setVisible(bool visible) {
    statusBar_.note(*this, visible ? "visible" : "invisible");
    if (visible_ == visible)
        return;
    // What it leaves behind is the place where it was last.
    statusBar_.layOut();
    visible_ = visible;
    statusBar_.reordered();
}

double SimulatedStatusItem::width() const {
    if (length_ != variableLength)
        return length_;
    const bool hasImage = button_ && button_->image();
    const double titleWidth = button_ ? widthOfCharacter * static_cast<double>(button_->title().size()) : 0;
    return 2 * contentMargin + titleWidth + (hasImage ? imageWidth(*button_->image()) : 0);
}

}  // namespace velmo
