#include "bar_window.h"

#include "linux/qt/pixels.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QGuiApplication>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velmo {

namespace {

/// From pixels of the root window.
QRect placeOf(const Rect& pixels) {
    const QPointF corner(pixels.x, pixels.y);
    const QSizeF size = QSizeF(pixels.width, pixels.height) / ratioAt(corner);
    return QRectF(fromPixels(corner), size).toRect();
}

/// What the bar and its items have in common: nobody changes what they say.
class AccessiblePart : public QAccessibleObject {
public:
    using QAccessibleObject::QAccessibleObject;

    void setText(QAccessible::Text /*which*/, const QString& /*text*/) override {}
    QAccessible::State state() const override { return {}; }
};

class AccessibleBarPart : public AccessiblePart, public QAccessibleActionInterface {
public:
    explicit AccessibleBarPart(BarItemObject& object) : AccessiblePart(&object), object_(object) {}

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(object_.parent());
    }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::PushButton; }
    QRect rect() const override { return placeOf(object_.item().place); }
    QString text(QAccessible::Text which) const override {
        if (which == QAccessible::Name)
            return QString::fromStdString(object_.item().name);
        return which == QAccessible::Description ? QString::fromStdString(object_.item().description)
                                                 : QString();
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override {
        return object_.item().hasMenu ? QStringList{pressAction(), showMenuAction()}
                                      : QStringList{pressAction()};
    }
    void doAction(const QString& name) override {
        if (name == pressAction())
            object_.press();
        else if (name == showMenuAction())
            object_.showMenu();
    }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

private:
    BarItemObject& object_;
};

class AccessibleWholeBar : public AccessiblePart {
public:
    explicit AccessibleWholeBar(BarWindow& window) : AccessiblePart(&window), window_(window) {}

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(qApp); }
    QAccessibleInterface* child(int index) const override {
        const auto& items = window_.items();
        const auto place = static_cast<std::size_t>(index);
        return index >= 0 && place < items.size() ? QAccessible::queryAccessibleInterface(items[place].get())
                                                  : nullptr;
    }
    int childCount() const override { return static_cast<int>(window_.items().size()); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto& items = window_.items();
        const auto found = std::find_if(items.begin(), items.end(), [child](const auto& item) {
            return child && item.get() == child->object();
        });
        return found == items.end() ? -1 : static_cast<int>(found - items.begin());
    }
    QAccessible::Role role() const override { return QAccessible::Window; }
    QRect rect() const override { return placeOf(window_.bar().place()); }
    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Name ? QStringLiteral("Velmo menu bar") : QString();
    }

private:
    BarWindow& window_;
};

void tell(QObject& object, QAccessible::Event event) {
    QAccessibleEvent message(&object, event);
    QAccessible::updateAccessibility(&message);
}

}  // namespace

BarWindow::BarWindow(AccessibleBar& bar) : bar_(bar), changes_(bar.onChange([this] { follow(); })) {
    follow();
}

QAccessibleInterface* BarWindow::accessibleRoot() const {
    return QAccessible::queryAccessibleInterface(const_cast<BarWindow*>(this));
}

void BarWindow::follow() {
    auto former = std::exchange(items_, {});
    std::vector<QObject*> added;
    auto latest = former.begin();
    bool isReordered = false;
    for (const auto& item : bar_.items()) {
        const auto known = std::find_if(former.begin(), former.end(), [&](const auto& object) {
            return object && object->item().number == item.number;
        });
        if (known == former.end()) {
            items_.push_back(std::make_unique<BarItemObject>(bar_, item, this));
            added.push_back(items_.back().get());
        } else {
            change(**known, item);
            isReordered = isReordered || known < latest;
            latest = known;
            items_.push_back(std::move(*known));
        }
    }
    for (auto* object : added)
        tell(*object, QAccessible::ObjectCreated);
    for (const auto& object : former) {
        if (object)
            tell(*object, QAccessible::ObjectDestroyed);
    }
    if (isReordered)
        tell(*this, QAccessible::ObjectReorder);
}

void BarWindow::change(BarItemObject& object, const AccessibleBarItem& item) {
    const auto before = object.item();
    object.setItem(item);
    if (item.name != before.name)
        tell(object, QAccessible::NameChanged);
    if (item.description != before.description)
        tell(object, QAccessible::DescriptionChanged);
    if (item.place != before.place)
        tell(object, QAccessible::LocationChanged);
}

QAccessibleInterface* makeAccessibleOfBar(QObject* object) {
    if (auto* window = dynamic_cast<BarWindow*>(object))
        return new AccessibleWholeBar(*window);
    if (auto* item = dynamic_cast<BarItemObject*>(object))
        return new AccessibleBarPart(*item);
    return nullptr;
}

}  // namespace velmo
