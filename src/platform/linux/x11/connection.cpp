#include "connection.h"

#include "linux/x11/keyboard_extension.h"
#include "linux/x11/reply.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/render.h>
#include <xcb/res.h>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace velmo::x11 {

namespace {

constexpr std::uint8_t sentBit = 0x80;
constexpr int eventsATurn = 100;
constexpr std::uint8_t firstExtensionEvent = 64;

/// The window that an event of the core protocol is about.
xcb_window_t windowOf(const xcb_generic_event_t& event) {
    const auto as = [&event]<typename Type>(const Type*) { return reinterpret_cast<const Type&>(event); };
    switch (event.response_type & ~sentBit) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE:
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
        case XCB_MOTION_NOTIFY:
        case XCB_ENTER_NOTIFY:
        case XCB_LEAVE_NOTIFY:
            return as(static_cast<xcb_button_press_event_t*>(nullptr)).event;
        case XCB_DESTROY_NOTIFY:
        case XCB_UNMAP_NOTIFY:
        case XCB_MAP_NOTIFY:
        case XCB_REPARENT_NOTIFY:
        case XCB_CONFIGURE_NOTIFY:
        case XCB_CIRCULATE_NOTIFY:
        // These begin with the window that was to be asked, the parent of the one that they are about.
        case XCB_MAP_REQUEST:
        case XCB_CONFIGURE_REQUEST:
            return as(static_cast<xcb_map_notify_event_t*>(nullptr)).event;
        case XCB_PROPERTY_NOTIFY:
            return as(static_cast<xcb_property_notify_event_t*>(nullptr)).window;
        case XCB_CLIENT_MESSAGE:
            return as(static_cast<xcb_client_message_event_t*>(nullptr)).window;
        case XCB_SELECTION_CLEAR:
            return as(static_cast<xcb_selection_clear_event_t*>(nullptr)).owner;
        default:
            return XCB_WINDOW_NONE;
    }
}

bool answered(void* reply) {
    const auto held = owned(reply);
    return held != nullptr;
}

/// Announces the versions that we speak. Empty, or the name of a missing extension.
std::string missingExtension(xcb_connection_t* connection) {
    const std::array<std::pair<xcb_extension_t*, const char*>, 7> needed = {{
        {&xcb_input_id, "XInput"},
        {&xcb_randr_id, "RANDR"},
        {&xcb_composite_id, "Composite"},
        {&xcb_damage_id, "DAMAGE"},
        {&xcb_render_id, "RENDER"},
        {&xcb_res_id, "X-Resource"},
        {&xcb_xfixes_id, "XFIXES"},
    }};
    for (const auto& [extension, name] : needed)
        xcb_prefetch_extension_data(connection, extension);
    for (const auto& [extension, name] : needed) {
        const auto* data = xcb_get_extension_data(connection, extension);
        if (!data || !data->present)
            return name;
    }
    const auto input = xcb_input_xi_query_version(connection, 2, 2);
    const auto randr = xcb_randr_query_version(connection, 1, 5);
    const auto composite = xcb_composite_query_version(connection, 0, 4);
    const auto damage = xcb_damage_query_version(connection, 1, 1);
    const auto render = xcb_render_query_version(connection, 0, 11);
    const auto res = xcb_res_query_version(connection, 1, 2);
    const auto fixes = xcb_xfixes_query_version(connection, 5, 0);
    const std::array<std::pair<bool, const char*>, 7> answers = {{
        {answered(xcb_input_xi_query_version_reply(connection, input, nullptr)), "XInput 2"},
        {answered(xcb_randr_query_version_reply(connection, randr, nullptr)), "RANDR"},
        {answered(xcb_composite_query_version_reply(connection, composite, nullptr)), "Composite"},
        {answered(xcb_damage_query_version_reply(connection, damage, nullptr)), "DAMAGE"},
        {answered(xcb_render_query_version_reply(connection, render, nullptr)), "RENDER"},
        {answered(xcb_res_query_version_reply(connection, res, nullptr)), "X-Resource"},
        {answered(xcb_xfixes_query_version_reply(connection, fixes, nullptr)), "XFIXES"},
    }};
    for (const auto& [present, name] : answers) {
        if (!present)
            return name;
    }
    return {};
}

const xcb_screen_t* screenNumbered(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

}  // namespace

std::unique_ptr<Connection> Connection::open(EventLoop& loop, std::string& problem) {
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        problem = "cannot reach an X display (DISPLAY is unset or names none)";
        return nullptr;
    }
    auto missing = missingExtension(connection);
    if (missing.empty() && !useKeyboardExtension(connection))
        missing = "XKEYBOARD";
    if (!missing.empty()) {
        xcb_disconnect(connection);
        problem = "the X server lacks the extension " + missing;
        return nullptr;
    }
    return std::unique_ptr<Connection>(new Connection(connection, screenNumber, loop));
}

Connection::Connection(xcb_connection_t* connection, int screenNumber, EventLoop& loop)
    : connection_(connection),
      screen_(screenNumbered(connection, screenNumber)),
      loop_(loop),
      atoms_(std::make_unique<Atoms>(connection, screenNumber)),
      moreEvents_(loop, [this] { readEvents(); }),
      source_(loop.addSource(xcb_get_file_descriptor(connection), [this] { readEvents(); })),
      // Events that arrived together with a reply lie in memory, where no descriptor tells of them.
      beforeSleep_(loop.addBeforeSleep([this] { readEvents(); })) {
    // One mask for all who listen on the root window, since each client has but one there.
    selectEvents(root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                             XCB_EVENT_MASK_PROPERTY_CHANGE);
    keyboardEvents_ =
        onExtension(xcb_xkb_id, [this](const xcb_generic_event_t& event) { call(keyboardHandlers_, event); });
}

Connection::~Connection() {
    // What was asked last is done, too: other programs get their windows back.
    sync();
    xcb_disconnect(connection_);
}

std::optional<xcb_visualid_t> Connection::alphaVisual() const {
    auto depths = xcb_screen_allowed_depths_iterator(screen_);
    for (; depths.rem; xcb_depth_next(&depths)) {
        if (depths.data->depth != 32)
            continue;
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        for (; visuals.rem; xcb_visualtype_next(&visuals)) {
            if (visuals.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR)
                return visuals.data->visual_id;
        }
    }
    return std::nullopt;
}

bool Connection::isOurs(xcb_window_t window) const {
    const auto* setup = xcb_get_setup(connection_);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

Registration Connection::add(Entries& entries, Handler handler, std::function<void()> removed) {
    const auto place = entries.insert(entries.end(), std::make_shared<Entry>(Entry{std::move(handler)}));
    return Registration([&entries, place, removed = std::move(removed)] {
        (*place)->ended = true;
        entries.erase(place);
        if (removed)
            removed();
    });
}

void Connection::call(const Entries& entries, const xcb_generic_event_t& event) {
    // A copy, because handlers come and go while they are called.
    const std::vector<std::shared_ptr<Entry>> called(entries.begin(), entries.end());
    for (const auto& entry : called) {
        if (!entry->ended)
            entry->handler(event);
    }
}

Registration Connection::onWindow(xcb_window_t window, Handler handler) {
    return add(windowHandlers_[window], std::move(handler), [this, window] {
        const auto found = windowHandlers_.find(window);
        if (found != windowHandlers_.end() && found->second.empty())
            windowHandlers_.erase(found);
    });
}

Registration Connection::onExtension(xcb_extension_t& extension, Handler handler) {
    const auto* data = xcb_get_extension_data(connection_, &extension);
    auto& known = extensions_[data->major_opcode];
    known.firstEvent = data->first_event;
    return add(known.handlers, std::move(handler));
}

Registration Connection::onKeyboardChange(Handler handler) {
    return add(keyboardHandlers_, std::move(handler));
}

void Connection::selectEvents(xcb_window_t window, std::uint32_t mask) const {
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &mask);
}

std::vector<std::uint8_t> Connection::property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                                               std::uint32_t limit) const {
    const auto cookie = xcb_get_property(connection_, 0, window, name, type, 0, limit / 4);
    const auto reply = owned(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->type != type)
        return {};
    const auto* begin = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    return {begin, begin + xcb_get_property_value_length(reply.get())};
}

std::string Connection::textProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const {
    const auto value = property(window, name, type);
    return {value.begin(), value.end()};
}

void Connection::setCardinals(xcb_window_t window, xcb_atom_t property,
                              const std::vector<std::uint32_t>& values, xcb_atom_t type) const {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void Connection::setText(xcb_window_t window, xcb_atom_t property, const std::string& text,
                         xcb_atom_t type) const {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void Connection::sendMessage(xcb_window_t destination, std::uint32_t eventMask, xcb_window_t window,
                             xcb_atom_t type, const std::vector<std::uint32_t>& data) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), std::begin(message.data.data32));
    xcb_send_event(connection_, 0, destination, eventMask, reinterpret_cast<const char*>(&message));
}

void Connection::sync() const {
    owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void Connection::sync(std::chrono::milliseconds atMost) const {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + atMost;
    const unsigned request = xcb_get_input_focus(connection_).sequence;
    xcb_flush(connection_);
    void* reply = nullptr;
    while (xcb_poll_for_reply(connection_, request, &reply, nullptr) == 0) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        pollfd socket = {xcb_get_file_descriptor(connection_), POLLIN, 0};
        if (left.count() <= 0 || poll(&socket, 1, static_cast<int>(left.count())) < 0) {
            xcb_discard_reply(connection_, request);
            return;
        }
    }
    owned(reply);
}

void Connection::afterArrivedEvents(std::function<void()> work) {
    while (auto event = owned(xcb_poll_for_queued_event(connection_)))
        arrived_.push_back({std::move(event), nullptr});
    arrived_.push_back({nullptr, std::move(work)});
    moreEvents_.request();
}

void Connection::readEvents() {
    for (int count = 0; count < eventsATurn; ++count) {
        if (!arrived_.empty()) {
            const auto next = std::move(arrived_.front());
            arrived_.pop_front();
            if (next.event)
                dispatch(*next.event);
            else
                next.work();
            continue;
        }
        auto event = owned(xcb_poll_for_event(connection_));
        if (!event) {
            // Sending may read as well; what it has read lies in memory, where no descriptor tells of it.
            xcb_flush(connection_);
            event = owned(xcb_poll_for_queued_event(connection_));
        }
        if (!event) {
            if (xcb_connection_has_error(connection_))
                noticeLoss();
            return;
        }
        dispatch(*event);
    }
    // Other work has its turn, however many events there are.
    moreEvents_.request();
}

void Connection::noticeLoss() {
    if (std::exchange(lost_, true))
        return;
    // A descriptor that has hung up would wake the loop for ever.
    source_ = {};
    if (onLost_)
        onLost_();
}

void Connection::dispatch(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & ~sentBit);
    // Any client can send what looks like an event of the server. Of those, only messages count.
    const bool forged = (event.response_type & sentBit) != 0 && type != XCB_CLIENT_MESSAGE;
    if (type == 0 || forged)
        return;
    if (type == XCB_MAPPING_NOTIFY) {
        call(keyboardHandlers_, event);
    } else if (type == XCB_GE_GENERIC || type >= firstExtensionEvent) {
        dispatchToExtension(event);
    } else if (const auto found = windowHandlers_.find(windowOf(event)); found != windowHandlers_.end()) {
        call(found->second, event);
    }
}

void Connection::dispatchToExtension(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & ~sentBit);
    const Extension* sender = nullptr;
    if (type == XCB_GE_GENERIC) {
        const auto found = extensions_.find(reinterpret_cast<const xcb_ge_generic_event_t&>(event).extension);
        sender = found == extensions_.end() ? nullptr : &found->second;
    } else {
        // Extensions get their events in blocks; an event belongs to the nearest block that begins below it.
        for (const auto& [opcode, extension] : extensions_) {
            if (extension.firstEvent <= type && (!sender || sender->firstEvent < extension.firstEvent))
                sender = &extension;
        }
    }
    if (sender)
        call(sender->handlers, event);
}

}  // namespace velmo::x11
