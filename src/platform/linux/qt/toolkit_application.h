#pragma once

#include <QApplication>

namespace velmo {

/// Our menus open on items of the bar, whoever has the keyboard.
class ToolkitApplication : public QApplication {
public:
    using QApplication::QApplication;

    /// Qt closes menus once none of its windows has the keyboard any more, which it learns a moment late: the
    /// next menu would go with the window before it.
    bool notify(QObject* receiver, QEvent* event) override {
        if (event->type() == QEvent::ApplicationDeactivate && activePopupWidget())
            return true;
        return QApplication::notify(receiver, event);
    }
};

}  // namespace velmo
