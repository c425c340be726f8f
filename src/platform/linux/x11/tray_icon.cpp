#include "tray_icon.h"

#include "linux/x11/reply.h"

#include <xcb/composite.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t embeddedNotify = 0;
constexpr std::uint32_t embedVersion = 0;
/// Between two times that we draw an icon anew, and give its window back the size that it is to have: a
/// program may ask for either without end.
constexpr Seconds paintingPause = 0.01;
constexpr Seconds correctionPause = 0.25;
/// Between two looks at who has taken a window, for which the server is waited for: whoever has made it can
/// put it to and fro without end. A window manager does so some times in quick succession.
constexpr Seconds followingPause = 0.2;
constexpr int followingsAtOnce = 5;
/// In a second, of one icon. The next second nobody listens to it; what it asks for is done then, at the
/// server's cost, so that silence for all icons of a program that floods us would slow down everybody.
constexpr int mostEvents = 500;

/// Puts the window into our save-set, or takes it out: the server gives it back to the root window when our
/// connection ends, and keeps it out of sight there.
void setSaved(const Connection& connection, xcb_window_t client, bool saved) {
    xcb_xfixes_change_save_set(connection.raw(),
                               saved ? XCB_XFIXES_SAVE_SET_MODE_INSERT : XCB_XFIXES_SAVE_SET_MODE_DELETE,
                               XCB_XFIXES_SAVE_SET_TARGET_ROOT, XCB_XFIXES_SAVE_SET_MAPPING_UNMAP, client);
}

}  // namespace

TrayIcon::TrayIcon(MenuBar& bar, const TrayIconFacts& facts, const std::string& identity)
    : BarItem(bar.connection(), bar.window()),
      bar_(bar),
      spacing_(bar.itemSpacing()),
      facts_(facts),
      composited_(facts.depth != bar.connection().screen().root_depth),
      painting_(connection_.loop(), paintingPause, [this] { paint(); }),
      sizeCorrection_(connection_.loop(), correctionPause, [this] { tellSize(); }),
      mapping_(connection_.loop(), correctionPause, [this] { mapClient(); }),
      following_(
          connection_.loop(), followingPause, [this] { followClient(); }, followingsAtOnce) {
    setIdentity(identity);
    events_ = connection_.onWindow(facts_.client, [this](const auto& event) { handle(event); });
    requests_ = connection_.onWindow(window(), [this](const auto& event) { handleRequest(event); });
    damageEvents_ = connection_.onExtension(xcb_damage_id, [this](const xcb_generic_event_t& event) {
        const auto& damage = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
        if (damage.damage == damage_ && !isOfStep(event.full_sequence))
            damaged();
    });
    listen(true);
    if (facts_.parent == connection_.root())
        embed();
    else
        findOwner(facts_.parent);
    bar_.addItem(*this);
}

TrayIcon::~TrayIcon() {
    bar_.removeItem(*this);
    if (!ended_ && !isClaimed_ && !isInItsPlace()) {
        // Another tray may have it already.
        unredirect();
        release();
    } else if (!ended_) {
        xcb_unmap_window(connection_.raw(), facts_.client);
        // Not after, as a compositing manager gets what comes to the root window redirected only once we
        // have let go of it.
        unredirect();
        // Else the window would be destroyed together with the one around it.
        xcb_reparent_window(connection_.raw(), facts_.client, connection_.root(), 0, 0);
        release();
    }
    if (damage_ != 0)
        xcb_damage_destroy(connection_.raw(), damage_);
}

void TrayIcon::embed() {
    xcb_connection_t* raw = connection_.raw();
    isClaimed_ = false;
    hasBeenEmbedded_ = true;
    lookForOwner_.end();
    setSaved(connection_, facts_.client, true);
    const PixelRect area = clientArea();
    toldArea_ = area;
    xcb_reparent_window(raw, facts_.client, window(), static_cast<std::int16_t>(area.x),
                        static_cast<std::int16_t>(area.y));
    // Not before, as a compositing manager has what lies in the root window redirected, and nobody else can.
    xcb_composite_redirect_window(raw, facts_.client, redirection());
    if (composited_ && damage_ == 0) {
        damage_ = connection_.newId();
        xcb_damage_create(raw, damage_, facts_.client, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    }
    placeClient();
    const auto& atoms = connection_.atoms();
    connection_.setText(facts_.client, atoms.velmoItem, identity(), atoms.utf8String);
    connection_.sendMessage(facts_.client, XCB_EVENT_MASK_NO_EVENT, facts_.client, atoms.xembed,
                            {XCB_CURRENT_TIME, embeddedNotify, 0, window(), embedVersion});
    showOrHide();
}

void TrayIcon::unredirect() const {
    xcb_composite_unredirect_window(connection_.raw(), facts_.client, redirection());
}

/// Leaves nothing on a window that goes on without us, but for the name by which we know it again.
void TrayIcon::release() const {
    setSaved(connection_, facts_.client, false);
    connection_.selectEvents(facts_.client, XCB_EVENT_MASK_NO_EVENT);
}

unsigned TrayIcon::placeClient() const {
    const PixelRect area = clientArea();
    const std::uint32_t values[] = {static_cast<std::uint32_t>(area.x), static_cast<std::uint32_t>(area.y),
                                    static_cast<std::uint32_t>(area.width),
                                    static_cast<std::uint32_t>(area.height), 0};
    const auto request =
        xcb_configure_window(connection_.raw(), facts_.client,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_BORDER_WIDTH,
                             values);
    return request.sequence;
}

void TrayIcon::resized() {
    if (!isHere())
        return;
    const auto request = placeClient();
    // Else its look for this size is there already.
    if (nextLook_)
        resizing_ = request;
    else
        damaged();
}

void TrayIcon::appearanceChanged() {
    if (!isHere())
        return;
    placeClient();
    damaged();
    if (composited_)
        return;
    // The client's background may be that of the bar; what it has drawn over that, it is asked to draw anew.
    xcb_clear_area(connection_.raw(), 0, window(), 0, 0, 0, 0);
    xcb_clear_area(connection_.raw(), 1, facts_.client, 0, 0, 0, 0);
}

std::optional<BarItem::Content> TrayIcon::content() const {
    if (!place() || ended_)
        return std::nullopt;
    return Content{facts_.client, facts_.visual, true, clientArea(), XCB_PIXMAP_NONE};
}

WindowListEntry TrayIcon::describe() const {
    WindowListEntry entry;
    entry.number = facts_.client;
    entry.ownerPID = facts_.processIdentifier;
    entry.ownerName = facts_.ownerName;
    entry.name = facts_.title;
    return entry;
}

/// What the client asks for in its place in the bar, we are asked for.
void TrayIcon::listen(bool listening) const {
    connection_.selectEvents(facts_.client,
                             listening ? trayClientEvents : std::uint32_t{XCB_EVENT_MASK_NO_EVENT});
    connection_.selectEvents(window(),
                             listening ? XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT : XCB_EVENT_MASK_NO_EVENT);
}

bool TrayIcon::isBearable() {
    const Date now = connection_.loop().now();
    if (std::abs(now - countedSince_) > 1) {
        countedSince_ = now;
        eventCount_ = 0;
    }
    if (++eventCount_ == mostEvents) {
        listen(false);
        connection_.loop().schedule(1, lifetime_.guard([this] { listenAgain(); }));
    }
    return eventCount_ < mostEvents;
}

void TrayIcon::listenAgain() {
    if (ended_)
        return;
    listen(true);
    findClient();
    if (ended_)
        return;
    noticeNews(TrayIconNews::Kind::embedding);
    noticeNews(TrayIconNews::Kind::title);
    if (!isHere())
        return;
    placeClient();
    damaged();
}

void TrayIcon::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_DESTROY_NOTIFY:
            end();
            break;
        default:
            if (isBearable())
                handleChange(event);
            break;
    }
}

void TrayIcon::handleChange(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_CONFIGURE_NOTIFY: {
            const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            const PixelRect told = {change.x, change.y, change.width, change.height};
            const auto former = std::exchange(toldArea_, told);
            if (told != clientArea())
                sizeCorrection_.request();
            else if (told.width != former.width || told.height != former.height)
                damaged();
            break;
        }
        case XCB_REPARENT_NOTIFY: {
            const auto& change = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
            const PixelRect area = clientArea();
            if (change.parent != window())
                clientWentInto(change.parent);
            else if (change.x != area.x || change.y != area.y)
                sizeCorrection_.request();
            break;
        }
        case XCB_MAP_NOTIFY:
            damaged();
            break;
        case XCB_PROPERTY_NOTIFY: {
            const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
            if (atom == connection_.atoms().xembedInfo)
                noticeNews(TrayIconNews::Kind::embedding);
            else if (atom == connection_.atoms().netWmName || atom == XCB_ATOM_WM_NAME)
                noticeNews(TrayIconNews::Kind::title);
            break;
        }
        default:
            break;
    }
}

void TrayIcon::handleRequest(const xcb_generic_event_t& event) {
    if (!isBearable())
        return;
    const auto type = event.response_type & 0x7f;
    if (type == XCB_CONFIGURE_REQUEST &&
        reinterpret_cast<const xcb_configure_request_event_t&>(event).window == facts_.client)
        sizeCorrection_.request();
    else if (type == XCB_MAP_REQUEST &&
             reinterpret_cast<const xcb_map_request_event_t&>(event).window == facts_.client)
        mapping_.request();
}

void TrayIcon::mapClient() {
    if (facts_.wantsToBeShown && isHere())
        xcb_map_window(connection_.raw(), facts_.client);
}

void TrayIcon::noticeNews(TrayIconNews::Kind kind) {
    if (!std::exchange(isKnown(kind), true) && onNews_)
        onNews_(kind);
}

TrayIconNews TrayIcon::askForNews(TrayIconNews::Kind kind) {
    isKnown(kind) = false;
    TrayIconNews questions;
    if (kind == TrayIconNews::Kind::embedding)
        questions.embedding.emplace(connection_, facts_.client);
    else
        questions.title.emplace(connection_, facts_.client);
    return questions;
}

void TrayIcon::takeNews(const TrayIconNews& news) {
    if (news.title)
        facts_.title = news.title->answer();
    if (!news.embedding)
        return;
    facts_.wantsToBeShown = news.embedding->answer();
    showOrHide();
}

void TrayIcon::showOrHide() {
    if (facts_.wantsToBeShown)
        mapClient();
    else if (isHere())
        xcb_unmap_window(connection_.raw(), facts_.client);
    bar_.setNeedsLayout();
}

/// A client that asks for a size is told which one it has; one that took it gets its own back.
void TrayIcon::tellSize() {
    if (!isHere())
        return;
    placeClient();
    const PixelRect area = clientArea();
    const PixelRect onRoot = bar_.onRoot(place().value_or(PixelRect{}));
    xcb_configure_notify_event_t notice{};
    notice.response_type = XCB_CONFIGURE_NOTIFY;
    notice.event = facts_.client;
    notice.window = facts_.client;
    notice.x =
        static_cast<std::int16_t>(std::max<int>(onRoot.x + area.x, std::numeric_limits<std::int16_t>::min()));
    notice.y = static_cast<std::int16_t>(onRoot.y + area.y);
    notice.width = static_cast<std::uint16_t>(area.width);
    notice.height = static_cast<std::uint16_t>(area.height);
    xcb_send_event(connection_.raw(), 0, facts_.client, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&notice));
}

/// The program has taken its window elsewhere.
void TrayIcon::leave() {
    unredirect();
    release();
    end();
}

void TrayIcon::end() {
    if (std::exchange(ended_, true))
        return;
    lookForOwner_.end();
    // What still comes is about a window of somebody else.
    events_ = {};
    requests_ = {};
    damageEvents_ = {};
    bar_.setNeedsLayout();
    if (onEnd_)
        onEnd_();
}

}  // namespace velmo::x11
