#pragma once

#include "linux/x11/client_process.h"
#include "linux/x11/embedding_question.h"
#include "linux/x11/icon_title_question.h"

#include <cstdint>
#include <optional>
#include <string>

namespace velmo::x11 {

/// What is selected on another program's icon window.
inline constexpr std::uint32_t trayClientEvents =
    XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;

/// What there is to know of a window that is docked.
struct TrayIconFacts {
    xcb_window_t client = XCB_WINDOW_NONE;
    std::uint8_t depth = 0;
    xcb_visualid_t visual = 0;
    /// What the window lay in.
    xcb_window_t parent = XCB_WINDOW_NONE;
    /// Names the program, the same at each of its starts.
    std::string application;
    /// The identity that the icon had when it was in the bar before. Empty where it was not.
    std::string formerIdentity;
    std::optional<std::int32_t> processIdentifier;
    std::optional<std::string> ownerName;
    std::optional<std::string> title;
    bool wantsToBeShown = true;
};

/// Questions for what a program may say anew of an icon that is in the bar.
struct TrayIconNews {
    enum class Kind { embedding, title };

    std::optional<EmbeddingQuestion> embedding;
    std::optional<IconTitleQuestion> title;
};

/// Asks all of that, at once. The answer is to be taken, once.
class TrayIconQuestions {
public:
    /// For a window that is not ours.
    TrayIconQuestions(const Connection& connection, xcb_window_t client);

    /// Absent where the window is gone or unfit. Else its events are selected, from before the questions on.
    std::optional<TrayIconFacts> answer() const;

private:
    const Connection& connection_;
    xcb_window_t client_;
    xcb_get_window_attributes_cookie_t attributes_;
    xcb_get_geometry_cookie_t geometry_;
    xcb_query_tree_cookie_t tree_;
    ProcessQuestion process_;
    PropertyQuestion classes_;
    PropertyQuestion formerIdentity_;
    IconTitleQuestion title_;
    EmbeddingQuestion embedding_;
};

}  // namespace velmo::x11
