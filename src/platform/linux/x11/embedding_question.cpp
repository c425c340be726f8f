#include "embedding_question.h"

#include "linux/x11/tray_protocol.h"

#include <cstdint>

namespace velmo::x11 {

namespace {

/// A version and the flags.
constexpr std::uint32_t infoBytes = 8;

}  // namespace

EmbeddingQuestion::EmbeddingQuestion(const Connection& connection, xcb_window_t client)
    // Some clients give the property another type than its own.
    : info_(connection, client, connection.atoms().xembedInfo, XCB_GET_PROPERTY_TYPE_ANY, infoBytes) {}

bool EmbeddingQuestion::answer() const {
    return tray_protocol::wantsToBeShown(info_.numbers());
}

}  // namespace velmo::x11
