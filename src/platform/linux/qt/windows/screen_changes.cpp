#include "screen_changes.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmo {

ScreenChanges::ScreenChanges(const std::function<void()>& changed) {
    report_.setSingleShot(true);
    report_.setInterval(0);
    connect(&report_, &QTimer::timeout, this, changed);
    for (auto* screen : QGuiApplication::screens())
        watch(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        noteChange();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenChanges::noteChange);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &ScreenChanges::noteChange);
}

void ScreenChanges::watch(QScreen* screen) const {
    connect(screen, &QScreen::geometryChanged, this, &ScreenChanges::noteChange);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &ScreenChanges::noteChange);
}

}  // namespace velmo
