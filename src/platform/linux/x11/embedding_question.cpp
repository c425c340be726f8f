#include "embedding_question.h"

#include <cstdint>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t mappedFlag = 1;
/// A version and the flags.
constexpr std::uint32_t infoBytes = 8;

}  // namespace

EmbeddingQuestion::EmbeddingQuestion(const Connection& connection, xcb_window_t client)
    // Some clients give the property another type than its own.
    : info_(connection, client, connection.atoms().xembedInfo, XCB_GET_PROPERTY_TYPE_ANY, infoBytes) {}

bool EmbeddingQuestion::answer() const {
    const auto reply = info_.answer();
    if (!reply || reply->format != 32 || reply->value_len < 2)
        return true;
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return (values[1] & mappedFlag) != 0;
}

}  // namespace velmo::x11
