#include "foreign_message.h"
#include "linux/status_notifier/item_properties.h"
#include "linux/status_notifier/tool_tip_text.h"
#include "require.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

namespace {

constexpr const char* names[] = {"Id",
                                 "Title",
                                 "Status",
                                 "IconThemePath",
                                 "IconName",
                                 "IconPixmap",
                                 "OverlayIconName",
                                 "ToolTip",
                                 "AttentionIconName",
                                 "Menu",
                                 "ItemIsMenu",
                                 "OverlayIconPixmap",
                                 "AttentionIconPixmap",
                                 "Category"};

/// In bytes.
constexpr std::size_t longestLine = 500;
constexpr std::size_t longestDescription = 5000;
constexpr std::size_t longestPath = 4096;
constexpr std::size_t bytesAPixel = 4;

void requireFit(const velmo::status_notifier::ItemPicture& picture, int side) {
    using velmo::fuzz::require;
    require(picture.name.size() <= longestPath);
    if (!picture.pixmap)
        return;
    const auto& [width, height, pixels, size] = *picture.pixmap;
    require(width > 0 && height > 0 && size == velmo::Size{double(width), double(height)});
    // One that is nearly so large as the place keeps its size.
    require(std::max(width, height) <= 2 * std::max(side, 1));
    require(pixels && pixels->size() ==
                          bytesAPixel * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
}

/// A dozen tags, and none with anything beside its name.
void requireHarmless(std::string_view markup) {
    constexpr std::string_view kept[] = {"b",  "i",  "u",      "br", "p",  "ul",
                                         "ol", "li", "strong", "em", "tt", "small"};
    for (auto begin = markup.find('<'); begin != std::string_view::npos;
         begin = markup.find('<', begin + 1)) {
        const auto end = markup.find('>', begin);
        velmo::fuzz::require(end != std::string_view::npos);
        auto name = markup.substr(begin + 1, end - begin - 1);
        if (name.starts_with('/'))
            name.remove_prefix(1);
        velmo::fuzz::require(std::find(std::begin(kept), std::end(kept), name) != std::end(kept));
    }
}

}  // namespace

/// Whatever an item tells of itself: its texts are short, and its pictures as large as their place.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    fuzz::Bytes bytes(data, size);
    const auto order = fuzz::ForeignMessage::anyOrder(bytes);
    const int side = static_cast<int>(1 + bytes.below(96));
    fuzz::ForeignMessage message(bytes, order);
    if (bytes.below(8) == 0) {
        message.fill(message.anyType());
    } else {
        message.open('a', "{sv}");
        while (!bytes.isEmpty()) {
            message.open('e', "sv");
            message.text(names[bytes.below(std::size(names))]);
            message.fillVariant({"s", "o", "b", "a(iiay)", "(sa(iiay)ss)"});
            message.close();
        }
        message.close();
    }
    const auto sealed = message.seal();
    const auto properties = status_notifier::readItemProperties(sealed.get(), side, side / 2);
    for (const auto* line : {&properties.id, &properties.title, &properties.toolTipTitle})
        fuzz::require(line->size() <= longestLine);
    fuzz::require(properties.toolTipDescription.size() <= longestDescription);
    fuzz::require(properties.iconThemePath.size() <= longestPath);
    requireFit(properties.icon, side);
    requireFit(properties.attentionIcon, side);
    requireFit(properties.overlayIcon, side / 2);
    const auto& menu = properties.menuPath;
    fuzz::require(menu.empty() ||
                  (menu.size() <= longestPath && sd_bus_object_path_is_valid(menu.c_str()) > 0));
    requireHarmless(status_notifier::toolTipMarkup(properties.toolTipTitle, properties.toolTipDescription));
    return 0;
}
