#pragma once

#include "linux/toolkit/accessible_bar.h"

#include <QWindow>

#include <memory>
#include <utility>
#include <vector>

namespace velmo {

/// An item of the bar among Qt's objects.
class BarItemObject : public QObject {
public:
    BarItemObject(AccessibleBar& bar, AccessibleBarItem item, QObject* window)
        : QObject(window), bar_(bar), item_(std::move(item)) {}

    const AccessibleBarItem& item() const { return item_; }
    void setItem(const AccessibleBarItem& item) { item_ = item; }
    void press() { bar_.press(item_.number); }
    void showMenu() { bar_.showMenu(item_.number); }

private:
    AccessibleBar& bar_;
    AccessibleBarItem item_;
};

/// Stands for the bar where assistive programs look for Qt's windows. It is never shown.
class BarWindow : public QWindow {
public:
    /// The bar outlives this.
    explicit BarWindow(AccessibleBar& bar);

    QAccessibleInterface* accessibleRoot() const override;
    const AccessibleBar& bar() const { return bar_; }
    /// From left to right.
    const std::vector<std::unique_ptr<BarItemObject>>& items() const { return items_; }

private:
    void follow();
    /// Tells of what has changed.
    static void change(BarItemObject& object, const AccessibleBarItem& item);

    AccessibleBar& bar_;
    std::vector<std::unique_ptr<BarItemObject>> items_;
    Registration changes_;
};

/// For the window and its items. Null for all other objects.
QAccessibleInterface* makeAccessibleOfBar(QObject* object);

}  // namespace velmo
