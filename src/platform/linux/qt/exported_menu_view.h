#pragma once

#include "linux/toolkit/exported_menu.h"

#include <QAction>
#include <QHash>
#include <QMenu>
#include <QPoint>

#include <cstdint>
#include <functional>
#include <optional>

namespace velmo {

/// Shows one menu of an exported menu, and follows its changes: entries that stay keep their place and the
/// pointer.
class ExportedMenuView : public QMenu {
public:
    /// `onChosen` is told of the entry that the user has chosen.
    ExportedMenuView(ExportedMenu& menu, std::function<void(std::int32_t)> onChosen,
                     QWidget* parent = nullptr);

    /// Becomes the menu of this entry.
    void follow(const ExportedMenuEntry& entry);

protected:
    void actionEvent(QActionEvent* event) override;
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

private:
    /// A submenu gets its entries when the menu that it is in is about to be seen.
    void build();

    struct Shown {
        QAction* action = nullptr;
        std::optional<Image> icon;
        ExportedMenuEntry::Mark mark = ExportedMenuEntry::Mark::none;
        ExportedMenuEntry::MarkState markState = ExportedMenuEntry::MarkState::mixed;
        ExportedMenuView* submenu = nullptr;
    };

    void measure();
    void removeMissing(const ExportedMenuEntry& entry);
    void arrange(const ExportedMenuEntry& entry);
    void apply(Shown& shown, const ExportedMenuEntry& entry, qsizetype longest);
    void applyPicture(Shown& shown, const ExportedMenuEntry& entry) const;
    void applySubmenu(Shown& shown, const ExportedMenuEntry& entry);
    void remove(const Shown& shown);

    ExportedMenu& menu_;
    std::function<void(std::int32_t)> onChosen_;
    std::int32_t id_ = 0;
    bool isBuilt_ = false;
    bool isFollowing_ = false;
    /// A change of an entry has not been measured yet.
    bool isOutgrown_ = false;
    /// By the entry's id.
    QHash<std::int32_t, Shown> shown_;
};

/// Shows the menu at a place of the screen, in Qt's coordinates, until it closes; then the program is told
/// what was chosen.
void showExportedMenu(ExportedMenu& menu, const QPoint& place);

}  // namespace velmo
