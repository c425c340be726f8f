#include "client_process.h"

#include "linux/x11/reply.h"

#include <xcb/res.h>

namespace velmo::x11 {

std::optional<std::int32_t> processOfClient(const Connection& connection, xcb_window_t window) {
    const xcb_res_client_id_spec_t question = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(connection.raw(), 1, &question);
    const auto reply = owned(xcb_res_query_client_ids_reply(connection.raw(), cookie, nullptr));
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
