#include "linux/toolkit/toolkit.h"

#include "linux/qt/accessible_roles.h"
#include "linux/qt/bar_window.h"
#include "linux/qt/exported_menu_view.h"
#include "linux/qt/local_event_filter.h"
#include "linux/qt/pixels.h"
#include "linux/qt/plain_tool_tip.h"
#include "linux/qt/qt_loop.h"
#include "linux/qt/qt_menu.h"
#include "linux/qt/style.h"
#include "linux/qt/toolkit_application.h"
#include "linux/qt/windows/confirmation_dialog.h"
#include "linux/qt/windows/destroyed_windows.h"
#include "linux/qt/windows/qt_panel.h"
#include "linux/qt/windows/qt_popover.h"
#include "linux/qt/windows/qt_window.h"

#include <QAccessible>
#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <QStyle>
#include <QToolTip>
#include <QWidget>

#include <cmath>
#include <memory>

namespace velmo {

namespace {

/// Qt keeps references to these for as long as it runs.
struct Arguments {
    int count = 1;
    char name[6] = "velmo";
    char* values[2] = {name, nullptr};
};

QIcon windowIcon() {
    QIcon icon;
    for (const int side : {16, 32, 48, 128})
        icon.addFile(QStringLiteral(":/velmo/icon-%1.png").arg(side));
    return icon;
}

class QtToolkit : public Toolkit {
public:
    explicit QtToolkit(ToolkitHost& host)
        : application_(arguments_.count, arguments_.values),
          host_(host),
          loop_(host.loop()),
          localEvents_(host.localEvents()),
          confirmation_([&host](WindowNumber window) { host.activate(window); }) {
        style::setPlatformPalette(QApplication::palette(), QApplication::style()->standardPalette());
        application_.installEventFilter(&localEvents_);
        application_.installNativeEventFilter(&destroyedWindows_);
        if (const auto* server = application_.nativeInterface<QNativeInterface::QX11Application>())
            host_.spareButtonStates(server->connection());
        QAccessible::installFactory(makeAccessible);
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setApplicationName(QStringLiteral("velmo"));
        QApplication::setWindowIcon(windowIcon());
    }

    void runWhile(const std::function<bool()>& condition) override { loop_.runWhile(condition); }

    void interrupt() override {
        QWidget* closed = nullptr;
        for (auto* menu = QApplication::activePopupWidget(); menu && menu != closed;
             menu = QApplication::activePopupWidget()) {
            closed = menu;
            menu->close();
        }
    }

    void setAppearance(const Appearance& appearance) override {
        style::setAppearance(appearance);
        QApplication::setFont(style::font());
        QApplication::setPalette(style::palette());
        application_.setStyleSheet(style::sheet());
    }

    void popUp(const Menu& menu, int x, int y) override {
        showMenu(menu, fromPixels(QPoint(x, y)).toPoint());
    }

    void popUp(ExportedMenu& menu, int x, int y) override {
        showExportedMenu(menu, fromPixels(QPoint(x, y)).toPoint());
    }

    void showToolTip(const std::string& text, int x, int y) override {
        QToolTip::showText(fromPixels(QPoint(x, y)).toPoint(), plainToolTip(text));
    }

    void showRichToolTip(const std::string& markup, int x, int y) override {
        QToolTip::showText(fromPixels(QPoint(x, y)).toPoint(),
                           QStringLiteral("<qt>%1</qt>").arg(QString::fromStdString(markup)));
    }

    void hideToolTip() override { QToolTip::hideText(); }

    void setAccessibleBar(AccessibleBar* bar) override {
        bar_ = bar ? std::make_unique<BarWindow>(*bar) : nullptr;
    }

    void confirm(const Confirmation& confirmation, const std::function<void()>& action) override {
        confirmation_.ask(confirmation, action);
    }

    std::unique_ptr<Panel> makePanel(const PanelConfiguration& configuration) override {
        return std::make_unique<QtPanel>(host_, configuration);
    }
    std::unique_ptr<Popover> makePopover() override { return std::make_unique<QtPopover>(host_); }
    std::unique_ptr<Window> makeWindow(const View& content) override {
        return std::make_unique<QtWindow>(host_, content);
    }

private:
    Arguments arguments_;
    ToolkitApplication application_;
    ToolkitHost& host_;
    QtLoop loop_;
    LocalEventFilter localEvents_;
    DestroyedWindows destroyedWindows_;
    ConfirmationDialog confirmation_;
    std::unique_ptr<BarWindow> bar_;
};

}  // namespace

}  // namespace velmo

extern "C" __attribute__((visibility("default"))) velmo::Toolkit* velmoMakeToolkit(velmo::ToolkitHost* host) {
    // The bar is an X client; so is everything beside it, also where Wayland runs as well.
    qputenv("QT_QPA_PLATFORM", "xcb");
    // The program is silent, and so is what it loads.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return new velmo::QtToolkit(*host);
}
