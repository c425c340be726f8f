#include "tray_icon.h"

#include "linux/cut_text.h"
#include "linux/process/linux_process_info.h"
#include "linux/x11/client_process.h"
#include "linux/x11/reply.h"

#include <xcb/composite.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t embeddedNotify = 0;
constexpr std::uint32_t embedVersion = 0;
constexpr std::uint32_t mappedFlag = 1;
/// A client that insists on a size of its own is answered at most once in this time.
constexpr Seconds sizeCorrectionPause = 0.25;

/// The two texts of WM_CLASS, which stay the same from start to start: at most so many characters of them.
constexpr std::size_t longestName = 128;

std::string applicationName(const Connection& connection, xcb_window_t client) {
    auto text = connection.textProperty(client, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    while (!text.empty() && text.back() == '\0')
        text.pop_back();
    text.resize(std::min(text.size(), longestName));
    for (char& character : text) {
        if (character == '\0')
            character = '.';
        else if (character < ' ' || character > '~')
            character = '?';
    }
    return text;
}

/// Bytes, as for items of the session's bus.
constexpr std::size_t longestTitle = 500;

/// What a property of the type STRING holds, in UTF-8.
std::string fromLatin1(std::string_view text) {
    std::string result;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            result += character;
        } else {
            result += static_cast<char>(0xc0 | code >> 6);
            result += static_cast<char>(0x80 | (code & 0x3f));
        }
    }
    return result;
}

void selectEvents(const Connection& connection, xcb_window_t client, std::uint32_t mask) {
    xcb_change_window_attributes(connection.raw(), client, XCB_CW_EVENT_MASK, &mask);
}

/// Puts the window into our save-set, or takes it out: the server gives it back to the root window when our
/// connection ends, and keeps it out of sight there.
void setSaved(const Connection& connection, xcb_window_t client, bool saved) {
    xcb_xfixes_change_save_set(connection.raw(),
                               saved ? XCB_XFIXES_SAVE_SET_MODE_INSERT : XCB_XFIXES_SAVE_SET_MODE_DELETE,
                               XCB_XFIXES_SAVE_SET_TARGET_ROOT, XCB_XFIXES_SAVE_SET_MAPPING_UNMAP, client);
}

}  // namespace

std::optional<TrayIcon::Facts> TrayIcon::examine(const Connection& connection, xcb_window_t client) {
    if (client == XCB_WINDOW_NONE || client == connection.root() || connection.isOurs(client))
        return std::nullopt;
    xcb_connection_t* raw = connection.raw();
    // Listening begins before the first question: who dies after its answer is heard of.
    selectEvents(connection, client, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    const auto attributesCookie = xcb_get_window_attributes(raw, client);
    const auto geometryCookie = xcb_get_geometry(raw, client);
    const auto attributes = owned(xcb_get_window_attributes_reply(raw, attributesCookie, nullptr));
    const auto geometry = owned(xcb_get_geometry_reply(raw, geometryCookie, nullptr));
    if (!attributes || !geometry || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
        geometry->root != connection.root()) {
        selectEvents(connection, client, XCB_EVENT_MASK_NO_EVENT);
        return std::nullopt;
    }

    Facts facts;
    facts.client = client;
    facts.depth = geometry->depth;
    facts.visual = attributes->visual;
    facts.processIdentifier = processOfClient(connection, client);
    if (facts.processIdentifier)
        facts.ownerName = processName(*facts.processIdentifier);
    facts.application = applicationName(connection, client);
    if (facts.application.empty())
        facts.application = facts.ownerName.value_or("unknown");
    return facts;
}

TrayIcon::TrayIcon(MenuBar& bar, const Facts& facts, const std::string& identity)
    : BarItem(bar.connection(), bar.window()),
      bar_(bar),
      spacing_(bar.itemSpacing()),
      facts_(facts),
      composited_(facts.depth != bar.connection().screen().root_depth),
      painting_(connection_.loop(), [this] { paint(); }),
      embeddingInfo_(connection_.loop(), [this] { readEmbeddingInfo(); }),
      title_(connection_.loop(), [this] { readTitle(); }) {
    setIdentity(identity);
    events_ = connection_.onWindow(facts_.client, [this](const auto& event) { handle(event); });
    damageEvents_ = connection_.onExtension(xcb_damage_id, [this](const xcb_generic_event_t& event) {
        const auto& damage = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
        if (damage.damage == damage_)
            painting_.request();
    });
    embed();
    bar_.addItem(*this);
}

TrayIcon::~TrayIcon() {
    bar_.removeItem(*this);
    if (!ended_) {
        // Else the window would be destroyed together with the one around it.
        xcb_unmap_window(connection_.raw(), facts_.client);
        xcb_reparent_window(connection_.raw(), facts_.client, connection_.root(), 0, 0);
        release();
    }
    if (damage_ != 0)
        xcb_damage_destroy(connection_.raw(), damage_);
}

void TrayIcon::embed() {
    xcb_connection_t* raw = connection_.raw();
    setSaved(connection_, facts_.client, true);
    if (composited_) {
        xcb_composite_redirect_window(raw, facts_.client, XCB_COMPOSITE_REDIRECT_MANUAL);
        damage_ = connection_.newId();
        xcb_damage_create(raw, damage_, facts_.client, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    }
    const PixelRect area = clientArea();
    xcb_reparent_window(raw, facts_.client, window(), static_cast<std::int16_t>(area.x),
                        static_cast<std::int16_t>(area.y));
    placeClient();
    const auto& atoms = connection_.atoms();
    connection_.sendMessage(facts_.client, XCB_EVENT_MASK_NO_EVENT, facts_.client, atoms.xembed,
                            {XCB_CURRENT_TIME, embeddedNotify, 0, window(), embedVersion});
    readTitle();
    readEmbeddingInfo();
}

/// Leaves no trace on a window that goes on without us.
void TrayIcon::release() const {
    if (composited_)
        xcb_composite_unredirect_window(connection_.raw(), facts_.client, XCB_COMPOSITE_REDIRECT_MANUAL);
    setSaved(connection_, facts_.client, false);
    selectEvents(connection_, facts_.client, XCB_EVENT_MASK_NO_EVENT);
}

void TrayIcon::placeClient() {
    const PixelRect area = clientArea();
    const std::uint32_t values[] = {static_cast<std::uint32_t>(area.x), static_cast<std::uint32_t>(area.y),
                                    static_cast<std::uint32_t>(area.width),
                                    static_cast<std::uint32_t>(area.height), 0};
    xcb_configure_window(connection_.raw(), facts_.client,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_BORDER_WIDTH,
                         values);
}

void TrayIcon::appearanceChanged() {
    if (ended_)
        return;
    placeClient();
    painting_.request();
}

void TrayIcon::moved() {
    if (unpainted_)
        painting_.request();
}

std::optional<BarItem::Content> TrayIcon::content() const {
    if (!place() || ended_)
        return std::nullopt;
    return Content{facts_.client, facts_.visual, composited_, clientArea(), XCB_PIXMAP_NONE};
}

WindowListEntry TrayIcon::describe() const {
    WindowListEntry entry;
    entry.number = facts_.client;
    entry.ownerPID = facts_.processIdentifier;
    entry.ownerName = facts_.ownerName;
    entry.name = titleText_;
    return entry;
}

void TrayIcon::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_DESTROY_NOTIFY:
            end();
            break;
        case XCB_REPARENT_NOTIFY:
            if (reinterpret_cast<const xcb_reparent_notify_event_t&>(event).parent != window()) {
                release();
                end();
            }
            break;
        case XCB_CONFIGURE_NOTIFY:
            keepSize(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
            break;
        case XCB_MAP_NOTIFY:
            painting_.request();
            break;
        case XCB_PROPERTY_NOTIFY: {
            const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
            if (atom == connection_.atoms().xembedInfo)
                embeddingInfo_.request();
            else if (atom == connection_.atoms().netWmName || atom == XCB_ATOM_WM_NAME)
                title_.request();
            break;
        }
        default:
            break;
    }
}

/// A client without embedding information wants to be seen.
void TrayIcon::readEmbeddingInfo() {
    if (ended_)
        return;
    // Some clients give the property another type than its own.
    const auto cookie = xcb_get_property(connection_.raw(), 0, facts_.client, connection_.atoms().xembedInfo,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, 2);
    const auto reply = owned(xcb_get_property_reply(connection_.raw(), cookie, nullptr));
    wantsToBeShown_ = true;
    if (reply && reply->format == 32 && reply->value_len >= 2) {
        const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        wantsToBeShown_ = (values[1] & mappedFlag) != 0;
    }
    if (wantsToBeShown_)
        xcb_map_window(connection_.raw(), facts_.client);
    else
        xcb_unmap_window(connection_.raw(), facts_.client);
    bar_.setNeedsLayout();
}

void TrayIcon::readTitle() {
    if (ended_)
        return;
    const auto& atoms = connection_.atoms();
    auto title = connection_.textProperty(facts_.client, atoms.netWmName, atoms.utf8String);
    if (title.empty())
        title = fromLatin1(connection_.textProperty(facts_.client, XCB_ATOM_WM_NAME, XCB_ATOM_STRING));
    titleText_ = title.empty() ? std::nullopt : std::optional<std::string>(cutText(title, longestTitle));
}

void TrayIcon::keepSize(const xcb_configure_notify_event_t& change) {
    const PixelRect area = clientArea();
    if (PixelRect{change.x, change.y, change.width, change.height} == area) {
        painting_.request();
        return;
    }
    if (sizeCorrection_ && sizeCorrection_->isValid())
        return;
    placeClient();
    sizeCorrection_ =
        connection_.loop().schedule(sizeCorrectionPause, lifetime_.guard([this] { placeClient(); }));
}

void TrayIcon::paint() {
    unpainted_ = composited_ && !ended_;
    // Off the screen nobody looks; the next report of damage waits for this one to be answered.
    if (!unpainted_ || !place() || place()->x + place()->width <= 0)
        return;
    unpainted_ = false;
    xcb_connection_t* raw = connection_.raw();
    xcb_damage_subtract(raw, damage_, XCB_NONE, XCB_NONE);
    const xcb_pixmap_t content = connection_.newId();
    xcb_composite_name_window_pixmap(raw, facts_.client, content);
    const auto& painting = bar_.painting();
    painting.setBackground(window(),
                           painting.overlay(bar_.backgroundTile(), place()->width, place()->height, content,
                                            painting.formatOf(facts_.visual), clientArea()));
    xcb_free_pixmap(raw, content);
}

void TrayIcon::end() {
    if (std::exchange(ended_, true))
        return;
    // What still comes is about a window of somebody else.
    events_ = {};
    damageEvents_ = {};
    if (sizeCorrection_)
        sizeCorrection_->invalidate();
    bar_.setNeedsLayout();
    if (onEnd_)
        onEnd_();
}

}  // namespace velmo::x11
