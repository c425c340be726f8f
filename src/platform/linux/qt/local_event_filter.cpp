#include "local_event_filter.h"

#include "linux/qt/exported_menu_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>

namespace velmo {

namespace {

EventType typeOf(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return EventType::leftMouseDown;
        case Qt::RightButton:
            return EventType::rightMouseDown;
        default:
            return EventType::otherMouseDown;
    }
}

/// Of the window that an event of the user's has come to. Asked at other times, a window would be made before
/// its time, and then once more.
WindowNumber numberOf(QObject& object) {
    return static_cast<WindowNumber>(static_cast<QWindow&>(object).winId());
}

/// What happens while another program's menu is open is about that program.
bool isOfAnotherProgram() {
    return dynamic_cast<ExportedMenuView*>(QApplication::activePopupWidget()) != nullptr;
}

}  // namespace

bool LocalEventFilter::eventFilter(QObject* object, QEvent* event) {
    // Before a key goes to a window, Qt asks whether it may be a shortcut instead.
    if (event->type() == QEvent::ShortcutOverride && events_.isMonitored(EventType::keyDown)) {
        event->accept();
        return true;
    }
    // Windows get an event first, and the widgets in them the same one again.
    if (!object->isWindowType() || isOfAnotherProgram())
        return false;
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
        const auto& press = static_cast<const QMouseEvent&>(*event);
        events_.notePress(static_cast<std::uint32_t>(press.timestamp()));
        Event report{typeOf(press.button())};
        report.windowNumber = numberOf(*object);
        return events_.deliver(report) == EventDisposition::swallow;
    }
    if (event->type() != QEvent::KeyPress || !events_.isMonitored(EventType::keyDown))
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const auto report = events_.keyDown(key.nativeScanCode(), key.nativeModifiers(), numberOf(*object));
    return report && events_.deliver(*report) == EventDisposition::swallow;
}

}  // namespace velmo
