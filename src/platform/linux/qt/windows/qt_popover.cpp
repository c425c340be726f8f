#include "qt_popover.h"

#include "hanging_frame.h"
#include "linux/local_events.h"
#include "linux/qt/windows/await_server.h"

#include <QKeyEvent>

namespace velmo {

namespace {

/// Points between the anchor and the popover.
constexpr double anchorGap = 6;

constexpr EventMask presses =
    maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown) | maskOf(EventType::otherMouseDown);

}  // namespace

/// Escape closes.
class QtPopover::Keys : public QObject {
public:
    explicit Keys(QtPopover& popover) : popover_(popover) {}

protected:
    bool eventFilter(QObject* /*object*/, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
            return false;
        // Later: the owner may end the popover, to whose window this key is on its way.
        QMetaObject::invokeMethod(
            this, [this] { popover_.performClose(); }, Qt::QueuedConnection);
        return true;
    }

private:
    QtPopover& popover_;
};

QtPopover::QtPopover(ToolkitHost& host)
    : host_(host), window_(host, {.takesKeyboard = true}), keys_(std::make_unique<Keys>(*this)) {
    window_.setWindowTitle(QStringLiteral("Velmo.Popover"));
    window_.installEventFilter(keys_.get());
    window_.setOnBarChange([this] { followBar(); });
    window_.setOnLeave([this] { performClose(); });
}

QtPopover::~QtPopover() {
    onClose_ = nullptr;
    performClose();
}

void QtPopover::setContent(const View& content) {
    const Size former = window_.fittingSize();
    window_.content().setContent(content);
    if (window_.isVisible() && window_.fittingSize() != former)
        place();
}

void QtPopover::show(const Rect& rect, StatusBarButton& button, RectEdge /*preferredEdge*/) {
    const auto frame = button.frameOnScreen();
    if (!frame)
        return;
    // The bar lies at the top of its screen: there is room below it and nowhere else.
    anchor_ = {frame->x + rect.x, frame->maxY() - rect.y - rect.height, rect.width, rect.height};
    anchorWindow_ = button.windowNumber();
    barEnd_ = host_.barEnd();
    // So that the first Tab leads to the first control.
    window_.setFocus();
    place();
    // Only a window that the server has on the screen can have the keyboard.
    awaitServer();
    host_.takeKeyboard(window_.number());
    watch();
}

void QtPopover::place() {
    const Rect screen = host_.visibleFrame({anchor_.midX(), anchor_.midY()});
    const Rect frame =
        hangingFrame(anchor_.midX(), anchor_.minY() - anchorGap, window_.fittingSize(), screen);
    const Rect pixels = host_.toPixels(frame);
    window_.showAt({pixels.x, pixels.y});
}

void QtPopover::followBar() {
    const Point end = host_.barEnd();
    anchor_.x += end.x - barEnd_.x;
    anchor_.y += end.y - barEnd_.y;
    barEnd_ = end;
    place();
}

void QtPopover::watch() {
    monitors_.clear();
    if (behavior_ == PopoverBehavior::applicationDefined)
        return;
    monitors_.push_back(
        host_.events().addGlobalMonitor(presses, [this](const Event& /*event*/) { performClose(); }));
    monitors_.push_back(host_.localEvents().addMonitor(presses, [this](const Event& event) {
        if (event.windowNumber != window_.number() && !leavesClosingToAnchor(event))
            performClose();
        return EventDisposition::pass;
    }));
}

/// What the popover belongs to closes it by itself, or shows it anew, when it is clicked. Any other press
/// there opens a menu or moves the item, for which the popover is in the way.
bool QtPopover::leavesClosingToAnchor(const Event& press) const {
    return press.type == EventType::leftMouseDown && (press.modifierFlags & modifier::command) == 0 &&
           press.windowNumber == anchorWindow_;
}

void QtPopover::performClose() {
    if (!window_.isVisible())
        return;
    monitors_.clear();
    host_.giveKeyboardBack();
    window_.hide();
    // A copy: the owner may end the popover.
    if (const auto handler = onClose_)
        handler();
}

}  // namespace velmo
