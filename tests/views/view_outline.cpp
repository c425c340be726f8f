#include "views/view_outline.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace velmo {

namespace {

template <typename Enumeration, std::size_t count>
const char* nameOf(Enumeration value, const std::array<const char*, count>& names) {
    return names.at(static_cast<std::size_t>(value));
}

const char* name(HorizontalAlignment alignment) {
    return nameOf(alignment, std::array{"leading", "center", "trailing"});
}

const char* name(VerticalAlignment alignment) {
    return nameOf(alignment, std::array{"top", "center", "firstTextBaseline", "bottom"});
}

const char* name(FontWeight weight) {
    return nameOf(weight, std::array{"regular", "medium", "semibold", "bold"});
}

/// One view, without its children.
class Line {
public:
    std::string of(const View& view) {
        if (!view.id.empty())
            out_ << view.id << ": ";
        std::visit([this](const auto& content) { write(content); }, view.content);
        for (const auto& modifier : view.modifiers) {
            out_ << " | ";
            std::visit([this](const auto& value) { write(value); }, modifier);
        }
        return out_.str();
    }

private:
    void quoted(const std::string& text) {
        out_ << " \"";
        for (const char character : text)
            out_ << (character == '\n' ? std::string("\\n") : std::string(1, character));
        out_ << '"';
    }
    void optional(const char* what, const std::optional<double>& value) {
        if (value)
            out_ << ' ' << what << ' ' << *value;
    }
    void flag(const char* what, bool is) {
        if (is)
            out_ << ' ' << what;
    }
    void write(const SemanticColor& color) {
        out_ << ' '
             << nameOf(color.role, std::array{"clear", "primary", "secondary", "accent", "white", "red",
                                              "green", "orange"})
             << ' ' << color.opacity;
    }
    void write(const Image& image) {
        if (const auto* symbol = std::get_if<Symbol>(&image.content))
            out_ << " symbol " << symbol->name << ' ' << symbol->pointSize << ' ' << name(symbol->weight);
        else if (const auto* bitmap = std::get_if<Bitmap>(&image.content))
            out_ << " bitmap " << bitmap->width << " × " << bitmap->height << " in " << bitmap->size.width
                 << " × " << bitmap->size.height;
        else
            out_ << " drawing";
        flag("template", image.isTemplate);
        if (!image.accessibilityDescription.empty())
            quoted(image.accessibilityDescription);
    }

    void write(const EmptyView& /*view*/) { out_ << "Empty"; }
    void write(const Text& text) {
        out_ << "Text";
        for (const auto& run : text.runs) {
            quoted(run.text);
            flag("bold", run.isBold);
        }
    }
    void write(const ImageView& view) {
        out_ << "Image";
        write(view.image);
        flag("resizable", view.isResizable);
    }
    void write(const Divider& /*view*/) { out_ << "Divider"; }
    void write(const Spacer& /*view*/) { out_ << "Spacer"; }
    void write(const HStack& stack) {
        out_ << "HStack " << name(stack.alignment);
        optional("spacing", stack.spacing);
    }
    void write(const VStack& stack) {
        out_ << "VStack " << name(stack.alignment);
        optional("spacing", stack.spacing);
    }
    void write(const Grid& grid) {
        out_ << "Grid of " << grid.columnCount << " columns, width " << grid.columnWidth << ", spacing "
             << grid.columnSpacing << ' ' << grid.rowSpacing;
    }
    void write(const Label& label) {
        out_ << "Label";
        write(label.image);
    }
    void write(const Button& button) {
        out_ << "Button " << nameOf(button.style, std::array{"automatic", "borderless", "plain"});
    }
    void write(const Toggle& toggle) {
        out_ << "Toggle";
        quoted(toggle.title);
        out_ << (toggle.isOn ? " on" : " off");
    }
    void write(const Picker& picker) {
        out_ << "Picker " << nameOf(picker.style, std::array{"menu", "radioGroup"});
        quoted(picker.title);
        for (const auto& option : picker.options) {
            out_ << (option.tag == picker.selection ? "; chosen " : "; ") << option.tag;
            quoted(option.title);
            quoted(option.description);
        }
    }
    void write(const Slider& slider) {
        out_ << "Slider at " << slider.value << " from " << slider.minimum << " to " << slider.maximum
             << " by " << slider.step;
    }
    void write(const TextField& field) {
        out_ << "TextField";
        quoted(field.title);
        quoted(field.text);
    }
    void write(const LabeledContent& content) {
        out_ << "LabeledContent";
        quoted(content.title);
    }
    void write(const Form& /*form*/) { out_ << "Form"; }
    void write(const Section& section) {
        out_ << "Section";
        quoted(section.header);
        quoted(section.footer);
    }
    void write(const TabView& tabs) {
        out_ << "TabView";
        for (const auto& tab : tabs.tabs) {
            out_ << (tab.tag == tabs.selection ? "; chosen " : "; ") << tab.tag;
            quoted(tab.title);
            write(tab.image);
        }
    }

    void write(const Padding& padding) {
        const auto& insets = padding.insets;
        out_ << "padding " << insets.top << ' ' << insets.leading << ' ' << insets.bottom << ' '
             << insets.trailing;
    }
    void write(const Frame& frame) {
        out_ << "frame";
        optional("width", frame.width);
        optional("height", frame.height);
        optional("minWidth", frame.minWidth);
        optional("maxWidth", frame.maxWidth);
        out_ << ' ' << name(frame.alignment);
    }
    void write(const Background& background) {
        out_ << "background " << nameOf(background.shape, std::array{"roundedRectangle", "circle"}) << ' '
             << background.cornerRadius;
        write(background.color);
    }
    void write(const Font& font) {
        out_ << "font "
             << nameOf(font.style, std::array{"body", "headline", "callout", "caption", "caption2"});
        optional("size", font.size);
        if (font.weight)
            out_ << ' ' << name(*font.weight);
        flag("monospacedDigits", font.hasMonospacedDigits);
        flag("monospaced", font.isMonospaced);
    }
    void write(const Foreground& foreground) {
        out_ << "foreground";
        write(foreground.color);
    }
    void write(const SingleLine& line) { out_ << "singleLine " << line.minimumScale; }
    void write(const Help& help) {
        out_ << "help";
        quoted(help.text);
    }
    void write(const Disabled& disabled) { out_ << (disabled.isDisabled ? "disabled" : "enabled"); }
    void write(const AccessibilityLabel& label) {
        out_ << "accessibilityLabel";
        quoted(label.text);
    }
    void write(const KeyboardShortcut& shortcut) {
        out_ << "key " << nameOf(shortcut.key, std::array{"pageUp", "pageDown", "home"});
    }

    std::ostringstream out_;
};

void write(const View& view, const std::string& indentation, std::string& outline) {
    outline += indentation + Line().of(view) + '\n';
    for (const View& child : view.children)
        write(child, indentation + "  ", outline);
}

}  // namespace

std::string outlineOf(const View& root) {
    std::string outline;
    write(root, "", outline);
    return outline;
}

void expectOutline(const View& root, std::string_view name) {
    const auto file = std::filesystem::path(VELMO_OUTLINES) / (std::string(name) + ".txt");
    if (std::getenv("VELMO_KEEP_OUTLINES") != nullptr) {
        std::ofstream(file) << outlineOf(root);
        return;
    }
    std::ifstream stream(file);
    const std::string kept{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_EQ(outlineOf(root), kept) << "VELMO_KEEP_OUTLINES=1 keeps it, for the change to be read";
}

}  // namespace velmo
