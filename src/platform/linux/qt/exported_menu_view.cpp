#include "exported_menu_view.h"

#include "linux/qt/qt_menu.h"

#include <QCoreApplication>
#include <QIcon>
#include <QImage>
#include <QInputEvent>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <QScreen>
#include <QSet>
#include <QStyleOptionMenuItem>

#include <algorithm>
#include <optional>
#include <utility>

namespace velmo {

namespace {

using MarkState = ExportedMenuEntry::MarkState;

/// Of the square that marks and icons are drawn in.
constexpr int markSide = 16;
/// Characters that are shown of a text, as far as its menu is not longer than usual. All texts of a menu are
/// measured at once; where it is longer, they share what can be measured in a moment.
constexpr qsizetype longestText = 100;
constexpr qsizetype longestTextOfManyEntries = 20;
constexpr qsizetype mostCharacters = 20000;

qsizetype longestTextAmong(std::size_t entries) {
    const auto share = mostCharacters / std::max(static_cast<qsizetype>(entries), qsizetype{1});
    return std::clamp(share, longestTextOfManyEntries, longestText);
}

QString beginningOf(const std::string& text, qsizetype longest) {
    QString whole = QString::fromStdString(text);
    if (whole.size() <= longest)
        return whole;
    // Some characters are two of Qt's.
    return whole.left(longest + (whole[longest].isLowSurrogate() ? 1 : 0)) + QChar(0x2026);
}

/// The mnemonic is marked by an ampersand; what follows a tab stands at the right, where shortcuts do.
QString textOf(const ExportedMenuEntry& entry, qsizetype longest) {
    const QString label = beginningOf(entry.label, longest);
    QString text;
    bool hasMnemonic = false;
    for (qsizetype place = 0; place < label.size(); ++place) {
        const QChar character = label[place];
        const bool isMarker = character == QLatin1Char('_');
        if (character == QLatin1Char('&'))
            text += QLatin1String("&&");
        else if (character.isSpace())
            text += QLatin1Char(' ');
        else if (!isMarker)
            text += character;
        else if (place + 1 < label.size() && label[place + 1] == character)
            text += label[++place];
        else if (!std::exchange(hasMnemonic, true) && place + 1 < label.size())
            text += QLatin1Char('&');
    }
    if (!entry.shortcut.empty())
        text += QLatin1Char('\t') + beginningOf(entry.shortcut, longest / 2);
    return text;
}

const ExportedMenuEntry* findEntry(const ExportedMenuEntry& entry, std::int32_t id) {
    if (entry.id == id)
        return &entry;
    for (const auto& child : entry.children) {
        if (const auto* found = findEntry(child, id))
            return found;
    }
    return nullptr;
}

/// An icon in the colours that texts have in menus, with the pointer on them and without.
QIcon inTextColors(const QPalette& palette, const std::function<QImage(const QColor&)>& draw) {
    QIcon icon;
    icon.addPixmap(QPixmap::fromImage(draw(palette.color(QPalette::Text))), QIcon::Normal);
    icon.addPixmap(QPixmap::fromImage(draw(palette.color(QPalette::HighlightedText))), QIcon::Active);
    icon.addPixmap(QPixmap::fromImage(draw(palette.color(QPalette::PlaceholderText))), QIcon::Disabled);
    return icon;
}

QIcon iconOf(const Image& icon, const QPalette& palette, qreal ratio) {
    const auto* bitmap = std::get_if<Bitmap>(&icon.content);
    if (!bitmap || !bitmap->pixels)
        return {};
    const QImage image(bitmap->pixels->data(), bitmap->width, bitmap->height, qsizetype{bitmap->width} * 4,
                       QImage::Format_ARGB32_Premultiplied);
    if (!icon.isTemplate) {
        QImage copy = image.copy();
        copy.setDevicePixelRatio(ratio);
        return QPixmap::fromImage(copy);
    }
    return inTextColors(palette, [&](const QColor& color) {
        QImage tinted = image.copy();
        QPainter painter(&tinted);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(tinted.rect(), color);
        painter.end();
        tinted.setDevicePixelRatio(ratio);
        return tinted;
    });
}

/// The mark of an entry: a tick, a dot where one of several is on, a dash where that is not known, or the
/// room for them.
QIcon markIcon(const ExportedMenuEntry& entry, const QPalette& palette, qreal ratio) {
    return inTextColors(palette, [&](const QColor& color) {
        QImage image((QSizeF(markSide, markSide) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        if (entry.markState == MarkState::off)
            return image;
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (entry.markState == MarkState::mixed) {
            painter.drawLine(QPointF(4, 8), QPointF(12, 8));
        } else if (entry.mark == ExportedMenuEntry::Mark::radio) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawEllipse(QRectF(5, 5, 6, 6));
        } else {
            painter.drawPolyline(QPolygonF({{3.5, 8.5}, {6.5, 11.5}, {12.5, 4.5}}));
        }
        painter.end();
        return image;
    });
}

/// Knows the time of the last input, as the display server has it.
class InputTime : public QObject {
public:
    InputTime() { QCoreApplication::instance()->installEventFilter(this); }

    std::uint32_t last() const { return last_; }

protected:
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
        // Those that Qt passes on from one menu to another have none.
        const auto time = event->isInputEvent() ? static_cast<QInputEvent*>(event)->timestamp() : 0;
        if (time != 0)
            last_ = static_cast<std::uint32_t>(time);
        return false;
    }

private:
    std::uint32_t last_ = 0;
};

}  // namespace

ExportedMenuView::ExportedMenuView(ExportedMenu& menu, std::function<void(std::int32_t)> onChosen,
                                   QWidget* parent)
    : QMenu(parent), menu_(menu), onChosen_(std::move(onChosen)) {
    connect(this, &QMenu::aboutToShow, this, [this] {
        // Qt asks submenus for their entries' places before it opens them.
        for (const auto& shown : shown_) {
            if (shown.submenu)
                shown.submenu->build();
        }
        menu_.opened(id_);
    });
    connect(this, &QMenu::aboutToHide, this, [this] { menu_.closed(id_); });
}

void ExportedMenuView::build() {
    const auto* entry = isBuilt_ ? nullptr : findEntry(menu_.root(), id_);
    if (entry)
        follow(*entry);
}

void ExportedMenuView::follow(const ExportedMenuEntry& entry) {
    id_ = entry.id;
    isBuilt_ = true;
    isFollowing_ = true;
    removeMissing(entry);
    arrange(entry);
    isFollowing_ = false;
    measure();
}

/// A menu that is seen measures all its entries whenever one of them changes.
void ExportedMenuView::actionEvent(QActionEvent* event) {
    if (!isFollowing_ || !isVisible()) {
        QMenu::actionEvent(event);
        return;
    }
    setAttribute(Qt::WA_WState_Visible, false);
    QMenu::actionEvent(event);
    setAttribute(Qt::WA_WState_Visible);
    isOutgrown_ = true;
}

void ExportedMenuView::measure() {
    if (!std::exchange(isOutgrown_, false))
        return;
    // What does not fit on the screen scrolls.
    const QRect usable = screen()->geometry();
    QRect wanted(pos(), sizeHint().boundedTo(usable.size()));
    wanted.moveRight(std::min(wanted.right(), usable.right()));
    wanted.moveBottom(std::min(wanted.bottom(), usable.bottom()));
    wanted.moveLeft(std::max(wanted.left(), usable.left()));
    wanted.moveTop(std::max(wanted.top(), usable.top()));
    setGeometry(wanted);
    update();
}

/// What can be marked is told to assistive technologies, and has a mark of ours.
void ExportedMenuView::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenu::initStyleOption(option, action);
    option->checkType = QStyleOptionMenuItem::NotCheckable;
    option->checked = false;
    option->menuHasCheckableItems = false;
}

void ExportedMenuView::removeMissing(const ExportedMenuEntry& entry) {
    QSet<std::int32_t> present;
    for (const auto& child : entry.children)
        present.insert(child.id);
    for (auto place = shown_.begin(); place != shown_.end();) {
        if (present.contains(place.key())) {
            ++place;
            continue;
        }
        remove(*place);
        place = shown_.erase(place);
    }
}

void ExportedMenuView::remove(const Shown& shown) {
    removeAction(shown.action);
    // Either may be what calls us.
    if (shown.submenu)
        shown.submenu->deleteLater();
    shown.action->deleteLater();
}

void ExportedMenuView::arrange(const ExportedMenuEntry& entry) {
    auto present = actions();
    const auto longest = longestTextAmong(entry.children.size());
    for (qsizetype index = 0; index < static_cast<qsizetype>(entry.children.size()); ++index) {
        const auto& child = entry.children[static_cast<std::size_t>(index)];
        auto& shown = shown_[child.id];
        const bool isNew = !shown.action;
        if (isNew) {
            shown.action = new QAction(this);
            // A menu lets go of all that it has been connected with when an action moves.
            connect(shown.action, &QAction::triggered, shown.action,
                    [this, id = child.id] { onChosen_(id); });
        }
        apply(shown, child, longest);
        if (index < present.size() && present[index] == shown.action)
            continue;
        if (!isNew) {
            removeAction(shown.action);
            present.removeOne(shown.action);
        }
        insertAction(index < present.size() ? present[index] : nullptr, shown.action);
        present.insert(std::min(index, present.size()), shown.action);
    }
}

void ExportedMenuView::apply(Shown& shown, const ExportedMenuEntry& entry, qsizetype longest) {
    auto& action = *shown.action;
    action.setSeparator(entry.isSeparator);
    action.setText(textOf(entry, longest));
    action.setEnabled(entry.isEnabled);
    action.setVisible(entry.isVisible);
    applyPicture(shown, entry);
    applySubmenu(shown, entry);
}

/// A mark takes the picture's place while it is on.
void ExportedMenuView::applyPicture(Shown& shown, const ExportedMenuEntry& entry) const {
    if (shown.mark == entry.mark && shown.markState == entry.markState && shown.icon == entry.icon)
        return;
    shown.mark = entry.mark;
    shown.markState = entry.markState;
    shown.icon = entry.icon;
    const bool canBeMarked = entry.mark != ExportedMenuEntry::Mark::none;
    shown.action->setCheckable(canBeMarked);
    shown.action->setChecked(entry.markState == MarkState::on);
    QIcon icon;
    if (canBeMarked && (entry.markState != MarkState::off || !entry.icon))
        icon = markIcon(entry, palette(), devicePixelRatioF());
    else if (entry.icon)
        icon = iconOf(*entry.icon, palette(), devicePixelRatioF());
    shown.action->setIcon(icon);
    shown.action->setIconVisibleInMenu(true);
}

void ExportedMenuView::applySubmenu(Shown& shown, const ExportedMenuEntry& entry) {
    const bool hasSubmenu = entry.isSubmenu || !entry.children.empty();
    if (hasSubmenu && !shown.submenu) {
        shown.submenu = new ExportedMenuView(menu_, onChosen_, this);
        shown.submenu->id_ = entry.id;
        shown.action->setMenu(shown.submenu);
    } else if (!hasSubmenu && shown.submenu) {
        shown.action->setMenu(nullptr);
        std::exchange(shown.submenu, nullptr)->deleteLater();
    }
    if (shown.submenu && (shown.submenu->isBuilt_ || isVisible()))
        shown.submenu->follow(entry);
}

void showExportedMenu(ExportedMenu& menu, const QPoint& place) {
    std::optional<std::int32_t> chosen;
    std::uint32_t time = 0;
    {
        const InputTime input;
        ExportedMenuView view(menu, [&](std::int32_t id) {
            chosen = id;
            time = input.last();
        });
        // Its scale is that of the screen it will be on.
        view.ensurePolished();
        view.follow(menu.root());
        menu.setOnChange([&] {
            if (menu.hasEnded())
                view.close();
            else
                view.follow(menu.root());
        });
        view.exec(insideScreen(view, place));
        menu.setOnChange(nullptr);
    }
    if (chosen && !menu.hasEnded())
        menu.chosen(*chosen, time);
}

}  // namespace velmo
