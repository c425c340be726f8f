#include "client_process.h"

#include "linux/x11/reply.h"

namespace velmo::x11 {

namespace {

xcb_res_query_client_ids_cookie_t askForProcess(xcb_connection_t* connection, xcb_window_t window) {
    const xcb_res_client_id_spec_t question = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return xcb_res_query_client_ids(connection, 1, &question);
}

}  // namespace

ProcessQuestion::ProcessQuestion(const Connection& connection, xcb_window_t window)
    : connection_(connection.raw()), cookie_(askForProcess(connection_, window)) {}

std::optional<std::int32_t> ProcessQuestion::answer() const {
    const auto reply = owned(xcb_res_query_client_ids_reply(connection_, cookie_, nullptr));
    if (!reply)
        return std::nullopt;
    auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; ids.rem; xcb_res_client_id_value_next(&ids)) {
        const bool hasValue = xcb_res_client_id_value_value_length(ids.data) > 0;
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) && hasValue)
            return static_cast<std::int32_t>(*xcb_res_client_id_value_value(ids.data));
    }
    return std::nullopt;
}

}  // namespace velmo::x11
