#include "menubar/click_target.h"

namespace velmo {

void ClickTarget::clicked() const {
    const auto event = application_.currentEvent();
    if (event && handler)
        handler(*event);
}

}  // namespace velmo
