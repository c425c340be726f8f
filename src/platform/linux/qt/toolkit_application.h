#pragma once

#include <QApplication>
#include <QMenu>
#include <QWidget>

namespace velmo {

/// Our menus open on items of the bar, whoever has the keyboard; and who presses keys sees where they go.
class ToolkitApplication : public QApplication {
public:
    using QApplication::QApplication;

    /// Qt closes menus once none of its windows has the keyboard any more, which it learns a moment late: the
    /// next menu would go with the window before it.
    bool notify(QObject* receiver, QEvent* event) override {
        if (event->type() == QEvent::ApplicationDeactivate && showsMenuOfTheBar())
            return true;
        if (event->type() == QEvent::KeyPress && receiver->isWindowType())
            showFocus();
        return QApplication::notify(receiver, event);
    }

private:
    /// Those of windows, lists of pop-up buttons among them, close with their window.
    static bool showsMenuOfTheBar() {
        const QWidget* popup = activePopupWidget();
        while (popup && popup->parentWidget() && qobject_cast<const QMenu*>(popup))
            popup = popup->parentWidget();
        return qobject_cast<const QMenu*>(popup);
    }
    /// Qt marks a window as worked by keys once Tab is pressed, and no longer once it was hidden.
    static void showFocus() {
        QWidget* focused = focusWidget();
        if (focused == nullptr || focused->window()->testAttribute(Qt::WA_KeyboardFocusChange))
            return;
        focused->window()->setAttribute(Qt::WA_KeyboardFocusChange);
        focused->update();
    }
};

}  // namespace velmo
