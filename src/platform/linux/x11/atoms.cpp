#include "atoms.h"

#include "linux/x11/reply.h"

#include <string>
#include <utility>
#include <vector>

namespace velmo::x11 {

Atoms::Atoms(xcb_connection_t* connection, int screenNumber) {
    const std::string screen = "_S" + std::to_string(screenNumber);
    const std::vector<std::pair<xcb_atom_t*, std::string>> names = {
        {&gtkFrameExtents, "_GTK_FRAME_EXTENTS"},
        {&manager, "MANAGER"},
        {&motifWmHints, "_MOTIF_WM_HINTS"},
        {&netSupportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
        {&netSystemTrayColors, "_NET_SYSTEM_TRAY_COLORS"},
        {&netSystemTrayOpcode, "_NET_SYSTEM_TRAY_OPCODE"},
        {&netSystemTrayOrientation, "_NET_SYSTEM_TRAY_ORIENTATION"},
        {&netSystemTraySelection, "_NET_SYSTEM_TRAY" + screen},
        {&netSystemTrayVisual, "_NET_SYSTEM_TRAY_VISUAL"},
        {&netActiveWindow, "_NET_ACTIVE_WINDOW"},
        {&netClientList, "_NET_CLIENT_LIST"},
        {&netClientListStacking, "_NET_CLIENT_LIST_STACKING"},
        {&netCurrentDesktop, "_NET_CURRENT_DESKTOP"},
        {&netWmCmSelection, "_NET_WM_CM" + screen},
        {&netWmDesktop, "_NET_WM_DESKTOP"},
        {&netWmName, "_NET_WM_NAME"},
        {&netWmPid, "_NET_WM_PID"},
        {&netWmState, "_NET_WM_STATE"},
        {&netWmStateFullscreen, "_NET_WM_STATE_FULLSCREEN"},
        {&netWmStateMaximizedHorz, "_NET_WM_STATE_MAXIMIZED_HORZ"},
        {&netWmStateMaximizedVert, "_NET_WM_STATE_MAXIMIZED_VERT"},
        {&netWmStateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
        {&netWmStateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
        {&netWmStateSticky, "_NET_WM_STATE_STICKY"},
        {&netWmStrut, "_NET_WM_STRUT"},
        {&netWmStrutPartial, "_NET_WM_STRUT_PARTIAL"},
        {&netWmWindowType, "_NET_WM_WINDOW_TYPE"},
        {&netWmWindowTypeCombo, "_NET_WM_WINDOW_TYPE_COMBO"},
        {&netWmWindowTypeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
        {&netWmWindowTypeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
        {&netWmWindowTypeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
        {&netWmWindowTypeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
        {&netWmWindowTypeNormal, "_NET_WM_WINDOW_TYPE_NORMAL"},
        {&netWmWindowTypePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
        {&netWorkarea, "_NET_WORKAREA"},
        {&utf8String, "UTF8_STRING"},
        {&velmoCommand, "_VELMO_COMMAND"},
        {&velmoInstance, "_VELMO_INSTANCE" + screen},
        {&velmoItem, "_VELMO_ITEM"},
        {&velmoReopen, "_VELMO_REOPEN"},
        {&velmoTime, "_VELMO_TIME"},
        {&windowShadow, "_COMPTON_SHADOW"},
        {&wmState, "WM_STATE"},
        {&xembed, "_XEMBED"},
        {&xembedInfo, "_XEMBED_INFO"},
        {&xsettingsSelection, "_XSETTINGS" + screen},
        {&xsettingsSettings, "_XSETTINGS_SETTINGS"},
    };
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(names.size());
    for (const auto& [atom, name] : names)
        cookies.push_back(
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (const auto reply = owned(xcb_intern_atom_reply(connection, cookies[index], nullptr)))
            *names[index].first = reply->atom;
    }
}

}  // namespace velmo::x11
