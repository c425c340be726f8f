#include "views/builders.h"

namespace velmo {

View text(std::string content) {
    return text(std::vector<TextRun>{{std::move(content)}});
}

View text(std::vector<TextRun> runs) {
    return {Text{std::move(runs)}};
}

View symbol(std::string name) {
    return symbol(std::move(name), 0);
}

View symbol(std::string name, double pointSize, FontWeight weight) {
    return {ImageView{Image{Symbol{std::move(name), pointSize, weight}, false, {}}, false}};
}

View resizable(Image image) {
    return {ImageView{std::move(image), true}};
}

View divider() {
    return {Divider{}};
}

View spacer() {
    return {Spacer{}};
}

View hstack(std::optional<double> spacing, Views children, VerticalAlignment alignment) {
    return {HStack{alignment, spacing}, std::move(children)};
}

View vstack(std::optional<double> spacing, Views children, HorizontalAlignment alignment) {
    return {VStack{alignment, spacing}, std::move(children)};
}

View grid(const Grid& grid, Views cells) {
    return {grid, std::move(cells)};
}

View label(View text, std::string symbolName) {
    return {Label{Image{Symbol{std::move(symbolName)}, false, {}}}, {std::move(text)}};
}

View button(std::string title, std::function<void()> action, ButtonStyle style) {
    return {Button{style, std::move(action)}, {text(std::move(title))}};
}

View plainButton(View released, View pressed, std::function<void()> action) {
    return {Button{ButtonStyle::plain, std::move(action)}, {std::move(released), std::move(pressed)}};
}

View toggle(std::string title, bool isOn, std::function<void(bool)> onChange) {
    return {Toggle{std::move(title), isOn, std::move(onChange)}};
}

View picker(Picker picker) {
    return {std::move(picker)};
}

View slider(Slider slider) {
    return {std::move(slider)};
}

View textField(std::string title, std::string content, std::function<void(const std::string&)> onEdit) {
    return {TextField{std::move(title), std::move(content), std::move(onEdit)}};
}

View labeledContent(std::string title, View content) {
    return {LabeledContent{std::move(title)}, {std::move(content)}};
}

View form(Views sections) {
    return {Form{}, std::move(sections)};
}

View section(std::string header, Views rows, std::string footer) {
    return {Section{std::move(header), std::move(footer)}, std::move(rows)};
}

View tabView(TabView tabs, Views contents) {
    return {std::move(tabs), std::move(contents)};
}

Padding padding(double all) {
    return padding(all, all);
}

Padding padding(double horizontal, double vertical) {
    return {{vertical, horizontal, vertical, horizontal}};
}

Font font(TextStyle style) {
    return {style, {}, {}, false, false};
}

Foreground foreground(ColorRole role) {
    return {{role, 1}};
}

}  // namespace velmo
