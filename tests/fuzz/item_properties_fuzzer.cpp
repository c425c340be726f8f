#include "foreign_message.h"
#include "linux/status_notifier/item_properties.h"
#include "linux/status_notifier/tool_tip_text.h"

#include <iterator>

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

}  // namespace

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
    status_notifier::toolTipMarkup(properties.toolTipTitle, properties.toolTipDescription);
    return 0;
}
