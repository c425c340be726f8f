#include "picker_node.h"

#include "control_layout.h"
#include "control_target.h"
#include "leaf_nodes.h"
#include "macos/appkit/ns_accessibility.h"
#include "macos/appkit/ns_button.h"
#include "macos/appkit/ns_pop_up_button.h"
#include "placed.h"
#include "report.h"
#include "surface_view.h"

#include <algorithm>
#include <string>
#include <vector>

namespace velmo::macos {
namespace {

/// Points between options.
constexpr double optionGap = 6;
/// From the left of an option to its text.
constexpr double markWidth = 20;

}  // namespace

/// A pop-up button.
class PickerNode::Menu {
public:
    Menu(const NSView& surface, std::function<void(std::size_t)> choose)
        : button_(surface, NSPopUpButton::create()), choose_(std::move(choose)), target_(*button_, [this] {
              const NSInteger index = button_->indexOfSelectedItem();
              if (index >= 0)
                  choose_(static_cast<std::size_t>(index));
          }) {}
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    void display(const Picker& picker) {
        std::vector<std::string> titles;
        titles.reserve(picker.options.size());
        for (const PickerOption& option : picker.options)
            titles.push_back(option.title);
        if (titles != titles_) {
            titles_ = titles;
            fill();
        }
        const auto chosen = std::find_if(picker.options.begin(), picker.options.end(),
                                         [&](const auto& option) { return option.tag == picker.selection; });
        const NSInteger index = chosen == picker.options.end() ? -1 : chosen - picker.options.begin();
        // It may be open.
        if (button_->indexOfSelectedItem() != index)
            button_->selectItemAtIndex(index);
    }
    const NSPopUpButton& view() const { return *button_; }

private:
    void fill() {
        button_->removeAllItems();
        // The button's own way of adding a title takes away what has the same one.
        for (const std::string& title : titles_)
            button_->menu().addItem(NSMenuItem::with(NSString::from(title), nullptr, NSString::from("")));
    }

    Placed<NSPopUpButton> button_;
    std::vector<std::string> titles_;
    std::function<void(std::size_t)> choose_;
    ControlTarget target_;
};

/// Radio buttons below each other, each with its description.
class PickerNode::Options {
public:
    Options(const NSView& surface, std::function<void(std::size_t)> choose)
        : surface_(surface), choose_(std::move(choose)) {}
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    void display(const Picker& picker, const std::string& name, bool isEnabled);
    Size sizeThatFits(double width) const;
    void place(const Rect& area);

private:
    struct Row;

    // On a surface of their own, because radio buttons beside each other are one group.
    PlacedSurface surface_;
    std::vector<std::unique_ptr<Row>> rows_;
    std::function<void(std::size_t)> choose_;
};

struct PickerNode::Options::Row {
    Row(const NSView& surface, std::function<void()> chosen)
        : button(surface, NSButton::create()), description(surface), target(*button, std::move(chosen)) {
        button->setButtonType(NSButtonType::radio);
    }
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;

    Size sizeThatFits(double width) const {
        const Size first = naturalSize(*button);
        if (description.isEmpty())
            return first;
        const Size second = description.sizeThatFits(width - markWidth);
        return {std::max(first.width, markWidth + second.width), first.height + second.height};
    }
    void place(const Rect& area) {
        const Size first = naturalSize(*button);
        placeAligned(*button, {area.x, area.y, area.width, first.height});
        description.place({area.x + markWidth, area.y + first.height, area.width - markWidth,
                           std::max(area.height - first.height, 0.0)});
    }

    Placed<NSButton> button;
    TextLabel description;
    ControlTarget target;
};

void PickerNode::Options::display(const Picker& picker, const std::string& name, bool isEnabled) {
    describeGroup(surface_.view(), radioGroupRole.value(), name);
    while (rows_.size() < picker.options.size()) {
        const std::size_t index = rows_.size();
        rows_.push_back(std::make_unique<Row>(surface_.view(), [this, index] {
            // A copy: it may end this.
            const auto choose = choose_;
            choose(index);
        }));
    }
    rows_.resize(picker.options.size());
    for (std::size_t index = 0; index < rows_.size(); ++index) {
        const PickerOption& option = picker.options[index];
        Row& row = *rows_[index];
        row.button->setTitle(NSString::from(option.title));
        const NSInteger state = option.tag == picker.selection ? control_state::on : control_state::off;
        if (row.button->state() != state)
            row.button->setState(state);
        row.button->setEnabled(isEnabled);
        row.button->setAccessibilityHelp(NSString::from(option.description));
        row.description.display(option.description, {{.style = TextStyle::caption}, {ColorRole::secondary}});
        // The button says it as its help.
        setAccessibilityElement(row.description.view(), false);
    }
}

Size PickerNode::Options::sizeThatFits(double width) const {
    Size size{0, rows_.empty() ? 0 : optionGap * static_cast<double>(rows_.size() - 1)};
    for (const auto& row : rows_) {
        const Size one = row->sizeThatFits(width);
        size.width = std::max(size.width, one.width);
        size.height += one.height;
    }
    return size;
}

void PickerNode::Options::place(const Rect& area) {
    macos::place(surface_.view(), area);
    double y = 0;
    for (const auto& row : rows_) {
        const double height = row->sizeThatFits(area.width).height;
        row->place({0, y, area.width, height});
        y += height + optionGap;
    }
}

PickerNode::PickerNode(const NSView& surface) : RowNode(surface) {}

PickerNode::~PickerNode() = default;

void PickerNode::choose(std::size_t index) {
    const auto& picker = content<Picker>();
    if (index >= picker.options.size())
        return;
    report(picker.onSelect, reassert_, std::string(picker.options[index].tag));
}

void PickerNode::apply(const ViewContext& context) {
    const auto& picker = content<Picker>();
    reassert_ = context.reassert;
    showTitleOfNamed(picker.title, context);
    const std::string& name = context.accessibilityLabel.empty() ? picker.title : context.accessibilityLabel;
    const auto choose = [this](std::size_t index) { this->choose(index); };
    if (picker.style == PickerStyle::radioGroup) {
        menu_.reset();
        if (!options_)
            options_ = std::make_unique<Options>(surface(), choose);
        options_->display(picker, name, context.isEnabled);
        return;
    }
    options_.reset();
    if (!menu_)
        menu_ = std::make_unique<Menu>(surface(), choose);
    menu_->display(picker);
    menu_->view().setEnabled(context.isEnabled);
    describe(menu_->view(), name, context.help);
}

Size PickerNode::controlSize(double width) const {
    if (options_)
        return options_->sizeThatFits(width);
    return menu_ ? naturalSize(menu_->view()) : Size{};
}

void PickerNode::placeControl(const Rect& area) {
    if (options_)
        options_->place(area);
    else if (menu_)
        placeAligned(menu_->view(), area);
}

}  // namespace velmo::macos
