#include "status_item_window.h"

#include "linux/x11/menu_bar.h"
#include "linux/x11/window_tracking.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace velmo::x11 {

namespace {

std::optional<EventType> pressType(xcb_button_t button) {
    switch (button) {
        case XCB_BUTTON_INDEX_1:
            return EventType::leftMouseDown;
        case XCB_BUTTON_INDEX_2:
            return EventType::otherMouseDown;
        case XCB_BUTTON_INDEX_3:
            return EventType::rightMouseDown;
        default:
            return std::nullopt;
    }
}

EventType releaseTypeOf(EventType press) {
    switch (press) {
        case EventType::leftMouseDown:
            return EventType::leftMouseUp;
        case EventType::rightMouseDown:
            return EventType::rightMouseUp;
        default:
            return EventType::otherMouseUp;
    }
}

/// A toggle's: two pictures, each with and without a highlight.
constexpr std::size_t mostLooks = 4;

}  // namespace

StatusItemWindow::StatusItemWindow(MenuBar& bar, double length)
    : BarItem(bar.connection(), bar.window()),
      bar_(bar),
      spacing_(bar.itemSpacing()),
      length_(length),
      toolTip_(
          bar, *this, [this] { return toolTipText_; }, &LazyToolkit::showToolTip) {
    listenToMouse();
    setIdentity(bar.nextItemName());
    bar_.addItem(*this);
}

StatusItemWindow::~StatusItemWindow() {
    bar_.removeItem(*this);
}

void StatusItemWindow::setLength(double length) {
    length_ = length;
    bar_.setNeedsLayout();
}

void StatusItemWindow::setAutosaveName(const std::string& name) {
    setIdentity(name);
    connection_.setText(window(), XCB_ATOM_WM_NAME, name, XCB_ATOM_STRING);
    connection_.setText(window(), connection_.atoms().netWmName, name, connection_.atoms().utf8String);
    bar_.setNeedsLayout();
}

void StatusItemWindow::setVisible(bool visible) {
    visible_ = visible;
    bar_.setNeedsLayout();
}

void StatusItemWindow::setImage(const std::optional<Image>& image) {
    if (image == image_)
        return;
    image_ = image;
    setNeedsDisplay();
}

void StatusItemWindow::setTitle(const std::string& title) {
    if (title == title_)
        return;
    title_ = title;
    measureTitle();
    setNeedsDisplay();
}

void StatusItemWindow::setFont(const Font& font) {
    if (font == font_)
        return;
    font_ = font;
    measureTitle();
    setNeedsDisplay();
}

void StatusItemWindow::appearanceChanged() {
    looks_.clear();
    measureTitle();
    needsDisplay_ = true;
}

TextAttributes StatusItemWindow::titleAttributes() const {
    const auto& appearance = bar_.appearance();
    return {font_, appearance, appearance.pixels(bar_metrics::longestTitle)};
}

void StatusItemWindow::measureTitle() {
    titleWidth_ = title_.empty() ? 0 : bar_.text().width(title_, titleAttributes());
}

void StatusItemWindow::setEnabled(bool enabled) {
    enabled_ = enabled;
}

Size StatusItemWindow::size() const {
    bar_.layOutIfNeeded();
    const auto& appearance = bar_.appearance();
    const double width = place() ? place()->width : 0;
    return {width / appearance.scale, appearance.pixels(bar_metrics::thickness) / appearance.scale};
}

void StatusItemWindow::popUp(const Menu& menu, const Point& location) {
    bar_.layOutIfNeeded();
    if (!place())
        return;
    const auto& appearance = bar_.appearance();
    const PixelRect area = bar_.onRoot(*place());
    toolTip_.end();
    auto endHighlight = lifetime_.guard([this] { setHighlighted(false); });
    setHighlighted(true);
    bar_.toolkit().popUp(menu, area.x + appearance.pixels(location.x),
                         area.y + appearance.pixels(location.y));
    endHighlight();
}

std::optional<Rect> StatusItemWindow::frameOnScreen() const {
    bar_.layOutIfNeeded();
    if (!place())
        return std::nullopt;
    return bar_.screens().toScreen(bar_.onRoot(*place()));
}

std::optional<Screen> StatusItemWindow::screen() const {
    bar_.layOutIfNeeded();
    if (!place())
        return std::nullopt;
    return bar_.screens().all().front();
}

std::unique_ptr<TrackingArea> StatusItemWindow::addTrackingArea(const Rect& rect, TrackingAreaOptions options,
                                                                TrackingAreaOwner* owner) {
    const bool whole = (options & tracking::inVisibleRect) != 0 || rect == Rect{};
    if (!whole || !owner || !(options & tracking::mouseEnteredAndExited))
        return nullptr;
    return std::make_unique<WindowTracking>(connection_, bar_.currentEvent(), window(), *owner);
}

/// A window over all of a long divider would be painted for nothing.
PixelRect StatusItemWindow::windowAreaAt(const PixelRect& place) const {
    auto area = BarItem::windowAreaAt(place);
    if (isBlank() && bar_.isLong(place.width))
        area.width = 1;
    return area;
}

int StatusItemWindow::preferredWidth() const {
    const auto& appearance = bar_.appearance();
    if (length_ != variableLength)
        return std::max(appearance.pixels(length_), 0);
    return appearance.pixels(spacing_.itemWidth(contentWidth()));
}

double StatusItemWindow::contentWidth() const {
    if (!title_.empty())
        return titleWidth_ / bar_.appearance().scale;
    return image_ ? imageSize(*image_).width : 0;
}

void StatusItemWindow::setNeedsDisplay() {
    needsDisplay_ = true;
    bar_.setNeedsLayout();
}

/// So that the step itself has nothing to draw.
void StatusItemWindow::willMove(const PixelRect& next) {
    const PixelRect area = windowAreaAt(next);
    if (needsDisplay_ || !place() || area.width != windowArea().width || area.height != windowArea().height)
        picture(area.width, area.height);
}

void StatusItemWindow::displayIfNeeded() {
    // The release of a press goes nowhere once the window is hidden.
    if (!place())
        pressedButton_ = 0;
    if (!place() || !std::exchange(needsDisplay_, false))
        return;
    if (const auto* shown = picture(windowArea().width, windowArea().height)) {
        bar_.painting().setBackground(window(), *shown);
        return;
    }
    const std::uint32_t background = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(connection_.raw(), window(), XCB_CW_BACK_PIXMAP, &background);
    xcb_clear_area(connection_.raw(), 0, window(), 0, 0, 0, 0);
}

bool StatusItemWindow::isBlank() const {
    return !image_ && title_.empty();
}

/// Null where the item shows nothing; else valid until the next call.
const Pixmap* StatusItemWindow::picture(int width, int height) {
    if (isBlank())
        return nullptr;
    const Look look = {image_, title_, font_, pressedButton_ != 0 || highlighted_, width, height};
    const auto known = std::find_if(looks_.begin(), looks_.end(),
                                    [&look](const auto& candidate) { return candidate.first == look; });
    if (known != looks_.end())
        return &known->second;
    if (looks_.size() == mostLooks)
        looks_.pop_front();
    looks_.emplace_back(look, draw(look));
    return &looks_.back().second;
}

Pixmap StatusItemWindow::draw(const Look& look) const {
    Canvas canvas(look.width, look.height);
    bar_.drawBackground(canvas);
    if (look.highlighted)
        bar_.drawHighlight(canvas,
                           length_ == variableLength ? spacing_.highlightWidth(contentWidth()) : length_);
    drawContent(canvas);
    return bar_.painting().upload(canvas);
}

void StatusItemWindow::drawContent(Canvas& canvas) const {
    const auto& appearance = bar_.appearance();
    // Whole pixels, so that edges stay sharp.
    const auto middle = [](double room, double length) { return std::round((room - length) / 2); };
    if (!title_.empty()) {
        const double left = std::max(middle(canvas.width(), titleWidth_), 0.0);
        bar_.text().draw(canvas.context(), title_, titleAttributes(),
                         {left, 0, double(titleWidth_), double(canvas.height())}, appearance.text());
        return;
    }
    const Size size = imageSize(*image_);
    canvas.drawImage(*image_, middle(canvas.width(), size.width * appearance.scale),
                     middle(canvas.height(), size.height * appearance.scale), appearance, appearance.text());
}

/// A tooltip says first what the item is, and then what it is for.
BarItem::Label StatusItemWindow::label() const {
    constexpr std::string_view dash = " — ";
    const auto place = toolTipText_.find(dash);
    const std::string name = toolTipText_.substr(0, place);
    const std::string purpose =
        place == std::string::npos ? std::string() : toolTipText_.substr(place + dash.size());
    return {title_.empty() ? name : title_, purpose};
}

bool StatusItemWindow::click(xcb_button_t button, xcb_timestamp_t /*time*/) {
    const auto press = pressType(button);
    if (!press || !enabled_)
        return true;
    toolTip_.end();
    // The action of the press may end the item.
    auto release = lifetime_.guard(
        [this, release = releaseTypeOf(*press)] { send({.type = release, .windowNumber = window()}); });
    send({.type = *press, .windowNumber = window()});
    release();
    return true;
}

WindowListEntry StatusItemWindow::describe() const {
    WindowListEntry entry;
    entry.number = window();
    entry.ownerPID = bar_.processIdentifier();
    entry.ownerName = "Velmo";
    entry.name = identity();
    return entry;
}

void StatusItemWindow::setHighlighted(bool highlighted) {
    highlighted_ = highlighted;
    setNeedsDisplay();
}

void StatusItemWindow::pressed(const xcb_button_press_event_t& event) {
    const auto type = pressType(event.detail);
    const std::int64_t number = bar_.localEvents().notePress(event.time);
    toolTip_.end();
    // A second button during a press belongs to the first one's click.
    if (!type || pressedButton_ != 0)
        return;
    const Event press{.type = *type,
                      .modifierFlags = bar_.modifiers().flags(event.state),
                      .windowNumber = window(),
                      .eventNumber = number};
    if (isSwallowed(press) || !enabled_)
        return;
    pressedButton_ = event.detail;
    pressNumber_ = number;
    setNeedsDisplay();
    send(press);
}

void StatusItemWindow::released(const xcb_button_release_event_t& event) {
    const auto type = pressType(event.detail);
    if (!type || event.detail != pressedButton_)
        return;
    pressedButton_ = 0;
    setNeedsDisplay();
    if (contains(event.event_x, event.event_y) && enabled_)
        send({.type = releaseTypeOf(*type),
              .modifierFlags = bar_.modifiers().flags(event.state),
              .windowNumber = window(),
              .eventNumber = pressNumber_});
}

/// True also where a monitor has ended the item.
bool StatusItemWindow::isSwallowed(const Event& event) {
    bool goesOn = false;
    auto proceed = lifetime_.guard([&goesOn] { goesOn = true; });
    const auto disposition = bar_.localEvents().deliver(event);
    proceed();
    return !goesOn || disposition == EventDisposition::swallow;
}

void StatusItemWindow::send(const Event& event) {
    if (!(actionMask_ & maskOf(event.type)) || !action_)
        return;
    // The action may end the item.
    const auto action = action_;
    bar_.currentEvent().during(event, action);
}

}  // namespace velmo::x11
