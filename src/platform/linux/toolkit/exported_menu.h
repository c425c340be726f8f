#pragma once

#include "image.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// One entry of a menu that another program exports, and the root of the menu, whose children are its
/// entries.
struct ExportedMenuEntry {
    enum class Mark { none, check, radio };
    enum class MarkState { off, on, mixed };

    std::int32_t id = 0;
    bool isSeparator = false;
    /// An underscore stands before the character that chooses the entry; two of them stand for one.
    std::string label;
    bool isEnabled = true;
    bool isVisible = true;
    Mark mark = Mark::none;
    /// Of an entry that can be marked. A program that says nothing of it does not know it.
    MarkState markState = MarkState::mixed;
    /// As it is shown, e.g. "Ctrl+Q"; empty for none.
    std::string shortcut;
    /// A bitmap that covers as many points as it has pixels.
    std::optional<Image> icon;
    bool isSubmenu = false;
    std::vector<ExportedMenuEntry> children;
};

/// A menu that another program exports: it may change while it is open.
class ExportedMenu {
public:
    virtual ~ExportedMenu() = default;

    virtual const ExportedMenuEntry& root() const = 0;
    /// True once the program has gone.
    virtual bool hasEnded() const = 0;
    /// Called after `root` or `hasEnded` has changed; an empty function ends that.
    virtual void setOnChange(std::function<void()> handler) = 0;

    /// A menu, or the root with 0, is about to be shown.
    virtual void opened(std::int32_t id) = 0;
    virtual void closed(std::int32_t id) = 0;
    /// `time` is that of the choice, as the display server has it; 0 where that is not known.
    virtual void chosen(std::int32_t id, std::uint32_t time) = 0;
};

}  // namespace velmo
