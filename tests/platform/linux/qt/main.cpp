#include "linux/qt/accessible_roles.h"
#include "linux/qt/style.h"
#include "linux/qt/toolkit_application.h"

#include <gtest/gtest.h>

#include <QAccessible>

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argumentCount, arguments);
    const velmo::ToolkitApplication application(argumentCount, arguments);
    velmo::style::setAppearance({.dark = false, .scale = 1, .font = "Inter 10"});
    QApplication::setFont(velmo::style::font());
    QApplication::setPalette(velmo::style::palette());
    QAccessible::installFactory(velmo::makeAccessible);
    return RUN_ALL_TESTS();
}
