#include "views/view_search.h"

#include <algorithm>

namespace velmo {

namespace {

bool symbolIs(const Image& image, std::string_view name) {
    const auto* symbol = std::get_if<Symbol>(&image.content);
    return symbol != nullptr && symbol->name == name;
}

/// What the content itself says, but for its children.
struct ContentSays {
    std::string_view what;

    bool operator()(const Text& text) const { return textOf(text) == what; }
    bool operator()(const ImageView& view) const { return symbolIs(view.image, what); }
    bool operator()(const Label& label) const { return symbolIs(label.image, what); }
    bool operator()(const Toggle& toggle) const { return toggle.title == what; }
    bool operator()(const Picker& picker) const { return picker.title == what; }
    bool operator()(const TextField& field) const { return field.title == what; }
    bool operator()(const LabeledContent& content) const { return content.title == what; }
    bool operator()(const Section& section) const { return section.header == what || section.footer == what; }
    bool operator()(const TabView& tabs) const {
        return std::any_of(tabs.tabs.begin(), tabs.tabs.end(),
                           [this](const TabItem& tab) { return tab.title == what; });
    }
    template <typename Other>
    bool operator()(const Other& /*silent*/) const {
        return false;
    }
};

/// Null, after a failure of the test, where the view is missing or disabled.
template <typename Content>
const Content* usable(const View* view, std::string_view name) {
    if (view == nullptr) {
        ADD_FAILURE() << "There is no \"" << name << "\".";
        return nullptr;
    }
    if (isDisabled(*view)) {
        ADD_FAILURE() << "\"" << name << "\" is disabled.";
        return nullptr;
    }
    return &std::get<Content>(view->content);
}

}  // namespace

bool says(const View& view, std::string_view what) {
    const auto help = modifierOf<Help>(view);
    const auto label = modifierOf<AccessibilityLabel>(view);
    if ((help && help->text == what) || (label && label->text == what))
        return true;
    if (std::holds_alternative<Button>(view.content) || std::holds_alternative<Label>(view.content)) {
        if (!view.children.empty() && shows(view.children.front(), what))
            return true;
    }
    return std::visit(ContentSays{what}, view.content);
}

bool shows(const View& root, std::string_view what) {
    return !findAll(root, [what](const View& view) { return says(view, what); }).empty();
}

std::string textOf(const Text& text) {
    std::string result;
    for (const TextRun& run : text.runs)
        result += run.text;
    return result;
}

std::vector<std::string> textsOf(const View& root) {
    std::vector<std::string> texts;
    for (const View* view : findAll<Text>(root))
        texts.push_back(textOf(std::get<Text>(view->content)));
    return texts;
}

bool isDisabled(const View& view) {
    const auto disabled = modifierOf<Disabled>(view);
    return disabled && disabled->isDisabled;
}

std::string toolTipOf(const View& view) {
    const auto help = modifierOf<Help>(view);
    return help ? help->text : std::string();
}

// Handlers are copied before they are called: they may replace the view that holds them.

void press(const View& root, std::string_view button) {
    if (const auto* found = usable<Button>(find<Button>(root, button), button)) {
        const auto action = found->action;
        action();
    }
}

void switchOver(const View& root, std::string_view toggle) {
    if (const auto* found = usable<Toggle>(find<Toggle>(root, toggle), toggle)) {
        const auto onChange = found->onChange;
        onChange(!found->isOn);
    }
}

void choose(const View& root, std::string_view picker, std::string_view option) {
    const auto* found = usable<Picker>(find<Picker>(root, picker), picker);
    if (found == nullptr)
        return;
    for (const PickerOption& candidate : found->options) {
        if (candidate.title != option)
            continue;
        const auto onSelect = found->onSelect;
        const std::string tag = candidate.tag;
        onSelect(tag);
        return;
    }
    ADD_FAILURE() << "\"" << picker << "\" has no option \"" << option << "\".";
}

void chooseTab(const View& root, std::string_view title) {
    const auto* found = usable<TabView>(find<TabView>(root, title), title);
    if (found == nullptr)
        return;
    const auto tab = std::find_if(found->tabs.begin(), found->tabs.end(),
                                  [title](const TabItem& item) { return item.title == title; });
    const auto onSelect = found->onSelect;
    const std::string tag = tab->tag;
    onSelect(tag);
}

void moveSlider(const View& root, std::string_view slider, double value) {
    if (const auto* found = usable<Slider>(find<Slider>(root, slider), slider)) {
        const auto onChange = found->onChange;
        onChange(value);
    }
}

void edit(const View& root, std::string_view textField, const std::string& text) {
    if (const auto* found = usable<TextField>(find<TextField>(root, textField), textField)) {
        const auto onEdit = found->onEdit;
        onEdit(text);
    }
}

void pressShortcut(const View& root, ShortcutKey key) {
    const auto found = findAll(root, [key](const View& view) {
        const auto shortcut = modifierOf<KeyboardShortcut>(view);
        return shortcut && shortcut->key == key;
    });
    if (const auto* button = usable<Button>(found.empty() ? nullptr : found.front(), "button with the key")) {
        const auto action = button->action;
        action();
    }
}

}  // namespace velmo
