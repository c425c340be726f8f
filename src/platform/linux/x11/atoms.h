#pragma once

#include <xcb/xcb.h>

namespace velmo::x11 {

/// Names that the X server knows by number; asked for all at once.
struct Atoms {
    /// As long as no server has been asked.
    Atoms() = default;
    Atoms(xcb_connection_t* connection, int screenNumber);

    xcb_atom_t gtkFrameExtents = 0;
    xcb_atom_t manager = 0;
    xcb_atom_t motifWmHints = 0;
    xcb_atom_t netSupportingWmCheck = 0;
    xcb_atom_t netSystemTrayColors = 0;
    xcb_atom_t netSystemTrayOpcode = 0;
    xcb_atom_t netSystemTrayOrientation = 0;
    xcb_atom_t netSystemTraySelection = 0;
    xcb_atom_t netSystemTrayVisual = 0;
    xcb_atom_t netActiveWindow = 0;
    xcb_atom_t netClientList = 0;
    xcb_atom_t netClientListStacking = 0;
    xcb_atom_t netCurrentDesktop = 0;
    xcb_atom_t netWmCmSelection = 0;
    xcb_atom_t netWmDesktop = 0;
    xcb_atom_t netWmName = 0;
    xcb_atom_t netWmPid = 0;
    xcb_atom_t netWmState = 0;
    xcb_atom_t netWmStateFullscreen = 0;
    xcb_atom_t netWmStateMaximizedHorz = 0;
    xcb_atom_t netWmStateMaximizedVert = 0;
    xcb_atom_t netWmStateSkipPager = 0;
    xcb_atom_t netWmStateSkipTaskbar = 0;
    xcb_atom_t netWmStateSticky = 0;
    xcb_atom_t netWmStrut = 0;
    xcb_atom_t netWmStrutPartial = 0;
    xcb_atom_t netWmWindowType = 0;
    xcb_atom_t netWmWindowTypeCombo = 0;
    xcb_atom_t netWmWindowTypeDesktop = 0;
    xcb_atom_t netWmWindowTypeDock = 0;
    xcb_atom_t netWmWindowTypeDropdownMenu = 0;
    xcb_atom_t netWmWindowTypeMenu = 0;
    xcb_atom_t netWmWindowTypeNormal = 0;
    xcb_atom_t netWmWindowTypePopupMenu = 0;
    xcb_atom_t netWorkarea = 0;
    xcb_atom_t utf8String = 0;
    xcb_atom_t velmoCommand = 0;
    xcb_atom_t velmoInstance = 0;
    xcb_atom_t velmoItem = 0;
    xcb_atom_t velmoReopen = 0;
    xcb_atom_t velmoTime = 0;
    xcb_atom_t wmState = 0;
    xcb_atom_t windowShadow = 0;
    xcb_atom_t xembed = 0;
    xcb_atom_t xembedInfo = 0;
    xcb_atom_t xsettingsSelection = 0;
    xcb_atom_t xsettingsSettings = 0;
};

}  // namespace velmo::x11
