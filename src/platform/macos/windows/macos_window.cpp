#include "macos_window.h"

#include "macos/appkit/ns_view_controller.h"

namespace velmo::macos {

MacosWindow::MacosWindow(RunLoop& loop, const View& content)
    : loop_(loop),
      host_(loop, [this](const TabView& tabs) { tabs_.display(tabs); }),
      window_(NSWindow::with(NSViewController::with(host_.view()))),
      tabs_(window_),
      controller_(NSWindowController::with(window_)) {
    // It stays where it was, rather than beside that.
    controller_.setShouldCascadeWindows(false);
    // The reference that closing would give up is ours.
    window_.setReleasedWhenClosed(false);
    window_.setDelegate(delegate_.object());
    window_.setAutorecalculatesKeyViewLoop(true);
    setContent(content);
}

MacosWindow::~MacosWindow() {
    window_.setDelegate(Object());
    window_.close();
}

void MacosWindow::setContent(const View& content) {
    host_.setContent(content);
    const Size size = host_.fittingSize();
    const CGSize former = host_.view().frame().size;
    if (former.width == size.width && former.height == size.height)
        return;
    const Rect frame = rectOf(window_.frame());
    const CGSize around = window_.frameForContent({{0, 0}, {size.width, size.height}}).size;
    // The title bar stays where it is.
    window_.setFrame({{frame.x, frame.maxY() - around.height}, around});
    host_.place({0, 0, size.width, size.height});
}

void MacosWindow::makeKeyAndOrderFront() {
    controller_.showWindow();
    window_.makeKeyAndOrderFront();
    window_.orderFrontRegardless();
}

void MacosWindow::willClose(const NSNotification& /*notification*/) {
    // Later: the owner may end the window, which is still at closing.
    loop_.post(lifetime_.guard([this] { closed(); }));
}

void MacosWindow::closed() const {
    // A copy: the owner may end the window. It may have been opened once more by now.
    if (const auto handler = onClose_; handler && !isVisible())
        handler();
}

}  // namespace velmo::macos
