#include "destroyed_windows.h"

#include <xcb/xcb.h>
#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace velmo {

namespace {

bool hasNumber(const QWidget& widget, xcb_window_t number) {
    const auto* window = widget.windowHandle();
    // Asked for its number, one that is not there yet would be made.
    return window && window->handle() && window->winId() == number;
}

/// What a widget leaves to itself.
class Remade : public QWidget {
public:
    using QWidget::create;
    using QWidget::destroy;
};

/// Who has it may end it, once it is closed. Made by the widget, the window is of the same type as before.
void closeAndRemake(const QPointer<QWidget>& widget) {
    widget->close();
    if (!widget)
        return;
    (widget->*&Remade::destroy)(true, true);
    (widget->*&Remade::create)(0, true, true);
}

}  // namespace

bool DestroyedWindows::nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) {
    const auto& event = *static_cast<const xcb_destroy_notify_event_t*>(message);
    // Compared as a whole: what another program has sent has another bit.
    if (event.response_type != XCB_DESTROY_NOTIFY)
        return false;
    for (auto* widget : QApplication::topLevelWidgets()) {
        if (!hasNumber(*widget, event.window))
            continue;
        // Later: the toolkit is about to look into its list of windows.
        QMetaObject::invokeMethod(
            widget,
            [widget, number = event.window] {
                if (hasNumber(*widget, number))
                    closeAndRemake(widget);
            },
            Qt::QueuedConnection);
    }
    return false;
}

}  // namespace velmo
