#include "platform/macos/contract/shared_records.h"

#include "macos/carbon/hot_keys.h"
#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_range.h"

namespace velmo::macos {

// Where a field lies cannot be told without a macro.
#define SHARED_FIELD(Record, ours, theirs)                                  \
    SharedField {                                                           \
        std::string(frameworkName<Record>), theirs, offsetof(Record, ours), \
            typeText<decltype(Record::ours)>()                              \
    }

std::vector<SharedField> sharedRecords() {
    return {SHARED_FIELD(CGPoint, x, "x"),
            SHARED_FIELD(CGPoint, y, "y"),
            SHARED_FIELD(CGSize, width, "width"),
            SHARED_FIELD(CGSize, height, "height"),
            SHARED_FIELD(CGRect, origin, "origin"),
            SHARED_FIELD(CGRect, size, "size"),
            SHARED_FIELD(NSRange, location, "location"),
            SHARED_FIELD(NSRange, length, "length"),
            SHARED_FIELD(EventHotKeyID, signature, "signature"),
            SHARED_FIELD(EventHotKeyID, id, "id"),
            SHARED_FIELD(EventTypeSpec, eventClass, "eventClass"),
            SHARED_FIELD(EventTypeSpec, eventKind, "eventKind")};
}

}  // namespace velmo::macos
