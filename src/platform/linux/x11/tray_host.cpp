#include "tray_host.h"

#include "linux/x11/selection.h"
#include "linux/x11/server_grab.h"
#include "linux/x11/tray_protocol.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t horizontal = 0;
/// More than anybody has; a program gone wild ends here.
constexpr std::size_t mostIcons = 1000;
/// The server is waited for once for so many of a kind, while clicks wait.
constexpr int atOnce = 8;
/// Between two times that we take icons; not between the first ones, as all that are in the session come
/// together when the bar starts. Whoever has nothing else to do takes each by itself.
constexpr Seconds dockingPause = 0.01;
constexpr int dockingsAtOnce = 256;
/// Between two times that we ask what is new of icons, however many there are: programs may say something new
/// without end.
constexpr Seconds readingPause = 0.025;

/// Red, green and blue as the tray protocol has them.
void append(std::vector<std::uint32_t>& values, const Color& color) {
    for (const double part : {color.red, color.green, color.blue})
        values.push_back(static_cast<std::uint32_t>(std::lround(part * 0xffff)));
}

}  // namespace

TrayHost::TrayHost(MenuBar& bar)
    : bar_(bar),
      connection_(bar.connection()),
      docking_(
          connection_.loop(), dockingPause, [this] { dockSome(); }, dockingsAtOnce),
      reading_(connection_.loop(), readingPause, [this] { readSome(); }),
      // In a later turn, because it is the icon itself that notices its end.
      removeEnded_(connection_.loop(),
                   [this] { std::erase_if(icons_, [](const auto& icon) { return icon->hasEnded(); }); }),
      appearanceChanges_(bar.settings().onChange([this] { publishAppearance(); })),
      selectionEvents_(connection_.onExtension(
          xcb_xfixes_id, [this](const xcb_generic_event_t& event) { selectionChanged(event); })) {
    xcb_xfixes_select_selection_input(connection_.raw(), connection_.root(),
                                      connection_.atoms().netSystemTraySelection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

TrayHost::~TrayHost() {
    close();
}

bool TrayHost::acquire() {
    open();
    const auto& atoms = connection_.atoms();
    if (!acquireSelection(connection_, atoms.netSystemTraySelection, window_)) {
        close();
        return false;
    }
    connection_.sendMessage(connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, connection_.root(),
                            atoms.manager, {XCB_CURRENT_TIME, atoms.netSystemTraySelection, window_});
    return true;
}

void TrayHost::open() {
    window_ = connection_.newId();
    const std::uint32_t values[] = {1};
    xcb_create_window(connection_.raw(), XCB_COPY_FROM_PARENT, window_, connection_.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, values);
    const auto& atoms = connection_.atoms();
    connection_.setCardinals(window_, atoms.netSystemTrayOrientation, {horizontal});
    const auto visual = connection_.alphaVisual().value_or(connection_.screen().root_visual);
    connection_.setCardinals(window_, atoms.netSystemTrayVisual, {visual}, XCB_ATOM_VISUALID);
    publishAppearance();
    events_ = connection_.onWindow(window_, [this](const auto& event) { handle(event); });
}

/// Gives the icons back. Programs notice by the window that the tray has gone.
void TrayHost::close() {
    if (!icons_.empty()) {
        // Nobody takes an icon between the look where it is and its leave.
        const ServerGrab grab(connection_);
        icons_.clear();
    }
    waiting_.clear();
    unreadEmbeddings_.clear();
    unreadTitles_.clear();
    events_ = {};
    if (window_ == XCB_WINDOW_NONE)
        return;
    xcb_destroy_window(connection_.raw(), window_);
    window_ = XCB_WINDOW_NONE;
}

void TrayHost::publishAppearance() const {
    // Foreground, error, warning and success.
    std::vector<std::uint32_t> colors;
    append(colors, bar_.appearance().text());
    append(colors, colorFromRgb(0xd33a31));
    append(colors, colorFromRgb(0xe08a00));
    append(colors, colorFromRgb(0x30a14e));
    if (window_ == XCB_WINDOW_NONE)
        return;
    connection_.setCardinals(window_, connection_.atoms().netSystemTrayColors, colors);
}

void TrayHost::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    if (type == XCB_SELECTION_CLEAR) {
        // Another program has become the tray, and gets the icons.
        close();
        return;
    }
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (const auto window = tray_protocol::windowToDock(message, connection_.atoms().netSystemTrayOpcode))
        requestDocking(*window);
}

/// We are the tray wherever nobody else is.
void TrayHost::selectionChanged(const xcb_generic_event_t& event) {
    const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (window_ == XCB_WINDOW_NONE && change.owner == XCB_WINDOW_NONE &&
        change.selection == connection_.atoms().netSystemTraySelection)
        acquire();
}

void TrayHost::requestDocking(xcb_window_t client) {
    if (client == connection_.root() || connection_.isOurs(client))
        return;
    const auto same = [client](const auto& icon) { return icon->client() == client && !icon->hasEnded(); };
    if (icons_.size() + waiting_.size() >= mostIcons || std::any_of(icons_.begin(), icons_.end(), same) ||
        std::find(waiting_.begin(), waiting_.end(), client) != waiting_.end())
        return;
    waiting_.push_back(client);
    docking_.request();
}

void TrayHost::dockSome() {
    std::vector<TrayIconQuestions> questions;
    for (int count = 0; count < atOnce && !waiting_.empty(); ++count) {
        questions.emplace_back(connection_, waiting_.front());
        waiting_.pop_front();
    }
    for (const auto& question : questions) {
        if (const auto facts = question.answer())
            dock(*facts);
    }
    if (!waiting_.empty())
        docking_.request();
}

void TrayHost::dock(const TrayIconFacts& facts) {
    auto icon =
        std::make_unique<TrayIcon>(bar_, facts, bar_.identityFor(facts.application, facts.formerIdentity));
    icon->setOnEnd([this] { removeEnded_.request(); });
    icon->setOnNews([this, client = facts.client](TrayIconNews::Kind kind) {
        unread(kind).push_back(client);
        reading_.request();
    });
    icons_.push_back(std::move(icon));
}

void TrayHost::readSome() {
    Asked asked;
    askSome(TrayIconNews::Kind::embedding, asked);
    askSome(TrayIconNews::Kind::title, asked);
    for (const auto& [icon, news] : asked)
        icon->takeNews(news);
    if (!unreadEmbeddings_.empty() || !unreadTitles_.empty())
        reading_.request();
    if (!asked.empty())
        bar_.tellOfChange();
}

/// Those that have gone cost no wait.
void TrayHost::askSome(TrayIconNews::Kind kind, Asked& asked) {
    auto& waiting = unread(kind);
    for (int count = 0; count < atOnce && !waiting.empty(); waiting.pop_front()) {
        const auto found = std::find_if(icons_.begin(), icons_.end(), [&](const auto& icon) {
            return icon->client() == waiting.front() && !icon->hasEnded();
        });
        if (found == icons_.end())
            continue;
        asked.emplace_back(found->get(), (*found)->askForNews(kind));
        ++count;
    }
}

}  // namespace velmo::x11
