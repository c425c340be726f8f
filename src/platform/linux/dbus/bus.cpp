#include "bus.h"

#include <sys/epoll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <string_view>
#include <utility>

namespace velmo::dbus {

namespace {

/// The bus answers at once; it is we who may be late.
constexpr Seconds daemonLimit = 25;
/// Of a turn of the loop.
constexpr int messagesATurn = 32;
constexpr std::chrono::milliseconds timeATurn(4);
constexpr std::uint64_t microseconds = 1000000;

struct EndSlot {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};

/// What the library is given of a handler. It outlives the call that ends its registration.
template <typename Handler>
struct Receiver {
    std::shared_ptr<Handler> handler;
};

template <typename Handler>
Registration registration(sd_bus_slot* slot, std::shared_ptr<Receiver<Handler>> receiver) {
    return Registration(
        [owned = std::shared_ptr<sd_bus_slot>(slot, EndSlot()), receiver = std::move(receiver)]() mutable {
            owned.reset();
            receiver.reset();
        });
}

int deliverSignal(sd_bus_message* message, void* context, sd_bus_error* /*error*/) {
    const auto handler = static_cast<Receiver<Bus::SignalHandler>*>(context)->handler;
    (*handler)(message);
    return 0;
}

int deliverAnswer(sd_bus_message* message, void* context, sd_bus_error* /*error*/) {
    const auto handler = static_cast<Receiver<Bus::AnswerHandler>*>(context)->handler;
    const sd_bus_error* error = sd_bus_message_get_error(message);
    if (error)
        (*handler)({nullptr, error->name ? error->name : ""});
    else
        (*handler)({message, {}});
    return 0;
}

/// A rule that the bus refuses costs what it would have told, not the connection.
int ignoreResult(sd_bus_message* /*message*/, void* /*context*/, sd_bus_error* /*error*/) {
    return 0;
}

std::uint64_t monotonicTime() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * microseconds +
           static_cast<std::uint64_t>(time.tv_nsec) / 1000;
}

}  // namespace

bool isSilence(const std::string& error) {
    return error == SD_BUS_ERROR_NO_REPLY || error == SD_BUS_ERROR_TIMEOUT ||
           error == "System.Error.ETIMEDOUT";
}

struct Bus::Question {
    MethodCall call;
    AnswerHandler onAnswer;
    Registration pending;
};

std::shared_ptr<Bus> Bus::open(EventLoop& loop, const std::string& address, std::function<void()> onLost,
                               bool& isMalformed) {
    isMalformed = false;
    sd_bus* bus = nullptr;
    if (sd_bus_new(&bus) < 0)
        return nullptr;
    if (sd_bus_set_address(bus, address.c_str()) < 0 || sd_bus_set_bus_client(bus, 1) < 0) {
        isMalformed = true;
        sd_bus_unref(bus);
        return nullptr;
    }
    const int started = sd_bus_start(bus);
    if (started < 0) {
        isMalformed = started == -EINVAL;
        sd_bus_unref(bus);
        return nullptr;
    }
    return std::shared_ptr<Bus>(new Bus(loop, bus, std::move(onLost)));
}

Bus::Bus(EventLoop& loop, sd_bus* bus, std::function<void()> onLost)
    : loop_(loop), bus_(bus), onLost_(std::move(onLost)), poll_(epoll_create1(EPOLL_CLOEXEC)) {
    source_ = loop_.addSource(poll_, [this] { process(); });
    beforeSleep_ = loop_.addBeforeSleep([this] { prepareToWait(); });
}

Bus::~Bus() {
    close();
    sd_bus_unref(bus_);
    source_ = {};
    ::close(poll_);
}

void Bus::close() {
    onLost_ = nullptr;
    lost_ = true;
    source_ = {};
    beforeSleep_ = {};
    setDeadline(UINT64_MAX);
    sd_bus_close(bus_);
}

std::string Bus::uniqueName() const {
    const char* name = nullptr;
    // Asked any earlier, the library would wait.
    if (lost_ || sd_bus_is_ready(bus_) <= 0 || sd_bus_get_unique_name(bus_, &name) < 0)
        return {};
    return name;
}

sd_bus_message* Bus::newCall(const MethodCall& call) const {
    sd_bus_message* message = nullptr;
    if (lost_ || sd_bus_message_new_method_call(bus_, &message, call.destination.c_str(), call.path.c_str(),
                                                call.interface.c_str(), call.member.c_str()) < 0)
        return nullptr;
    sd_bus_message_set_auto_start(message, call.startsDestination ? 1 : 0);
    if (call.arguments && call.arguments(message) < 0)
        message = sd_bus_message_unref(message);
    return message;
}

Registration Bus::call(const MethodCall& call, AnswerHandler onAnswer) {
    auto receiver = std::make_shared<Receiver<AnswerHandler>>();
    receiver->handler = std::make_shared<AnswerHandler>(std::move(onAnswer));
    sd_bus_message* message = newCall(call);
    sd_bus_slot* slot = nullptr;
    const auto limit = static_cast<std::uint64_t>(call.limit * static_cast<double>(microseconds));
    const bool sent =
        message && sd_bus_call_async(bus_, &slot, message, deliverAnswer, receiver.get(), limit) >= 0;
    sd_bus_message_unref(message);
    if (sent)
        return registration(slot, std::move(receiver));
    // Answered later in any case, as callers expect.
    auto alive = std::make_shared<bool>(true);
    loop_.post([alive, handler = receiver->handler] {
        if (*alive)
            (*handler)({nullptr, SD_BUS_ERROR_DISCONNECTED});
    });
    return Registration([alive] { *alive = false; });
}

Registration Bus::askAbout(const std::string& name, const std::string& member, AnswerHandler onAnswer) {
    auto question = std::make_shared<Question>();
    const auto appendName = [name](sd_bus_message* message) {
        return sd_bus_message_append(message, "s", name.c_str());
    };
    question->call = {daemonName, daemonPath, daemonName, member, appendName, daemonLimit};
    question->onAnswer = std::move(onAnswer);
    ask(question);
    return Registration([question] { question->pending = {}; });
}

void Bus::ask(const std::shared_ptr<Question>& question) {
    question->pending =
        call(question->call, [this, weak = std::weak_ptr<Question>(question)](const Answer& answer) {
            const auto asked = weak.lock();
            if (asked && isSilence(answer.error))
                ask(asked);
            else if (asked)
                asked->onAnswer(answer);
        });
}

Registration Bus::askForOwner(const std::string& name, std::function<void(const std::string&)> onOwner) {
    return askAbout(name, "GetNameOwner", [onOwner = std::move(onOwner)](const Answer& answer) {
        const char* owner = nullptr;
        const bool hasOwner = answer.message && sd_bus_message_read(answer.message, "s", &owner) > 0;
        onOwner(hasOwner ? owner : "");
    });
}

void Bus::send(const MethodCall& call) {
    sd_bus_message* message = newCall(call);
    if (!message)
        return;
    sd_bus_message_set_expect_reply(message, 0);
    sd_bus_send(bus_, message, nullptr);
    sd_bus_message_unref(message);
}

Registration Bus::onSignal(const std::string& match, SignalHandler handler) {
    auto receiver = std::make_shared<Receiver<SignalHandler>>();
    receiver->handler = std::make_shared<SignalHandler>(std::move(handler));
    sd_bus_slot* slot = nullptr;
    if (lost_ ||
        sd_bus_add_match_async(bus_, &slot, match.c_str(), deliverSignal, ignoreResult, receiver.get()) < 0)
        return {};
    return registration(slot, std::move(receiver));
}

Registration Bus::onOwnerChange(const std::string& name, std::function<void(const std::string&)> handler) {
    const std::string rule = std::string("type='signal',sender='") + daemonName + "',path='" + daemonPath +
                             "',interface='" + daemonName + "',member='NameOwnerChanged',arg0='" + name + "'";
    return onSignal(rule, [handler = std::move(handler)](sd_bus_message* message) {
        // The library holds only unique names in a rule against what is sent to us alone, which anybody can
        // do.
        const char* sender = sd_bus_message_get_sender(message);
        if (!sender || std::string_view(sender) != daemonName)
            return;
        const char* changed = nullptr;
        const char* formerOwner = nullptr;
        const char* owner = nullptr;
        if (sd_bus_message_read(message, "sss", &changed, &formerOwner, &owner) >= 0)
            handler(owner);
    });
}

Registration Bus::addObject(const std::string& path, const std::string& interface, const sd_bus_vtable* table,
                            void* context) {
    sd_bus_slot* slot = nullptr;
    if (lost_ || sd_bus_add_object_vtable(bus_, &slot, path.c_str(), interface.c_str(), table, context) < 0)
        return {};
    return Registration([slot] { sd_bus_slot_unref(slot); });
}

void Bus::emit(const std::string& path, const std::string& interface, const std::string& member,
               const std::function<int(sd_bus_message*)>& arguments) {
    sd_bus_message* message = nullptr;
    if (lost_ ||
        sd_bus_message_new_signal(bus_, &message, path.c_str(), interface.c_str(), member.c_str()) < 0)
        return;
    if (!arguments || arguments(message) >= 0)
        sd_bus_send(bus_, message, nullptr);
    sd_bus_message_unref(message);
}

void Bus::process() {
    const auto end = std::chrono::steady_clock::now() + timeATurn;
    for (int count = 0; count < messagesATurn && std::chrono::steady_clock::now() < end; ++count) {
        const int result = sd_bus_process(bus_, nullptr);
        if (result < 0 || sd_bus_is_open(bus_) <= 0) {
            noticeLoss();
            return;
        }
        if (result == 0)
            return;
    }
    if (!std::exchange(morePosted_, true)) {
        loop_.post(lifetime_.guard([this] {
            morePosted_ = false;
            if (!lost_)
                process();
        }));
    }
}

void Bus::prepareToWait() {
    if (lost_ || morePosted_)
        return;
    std::uint64_t deadline = UINT64_MAX;
    if (sd_bus_is_open(bus_) <= 0 || sd_bus_get_timeout(bus_, &deadline) < 0) {
        noticeLoss();
        return;
    }
    watch();
    setDeadline(deadline);
}

/// Which events of which descriptor matter changes while the connection is made.
void Bus::watch() {
    const int descriptor = sd_bus_get_fd(bus_);
    const int events = sd_bus_get_events(bus_);
    if (descriptor < 0 || events < 0 || (descriptor == watched_ && events == watchedEvents_))
        return;
    epoll_event event{};
    event.events = static_cast<std::uint32_t>(events);
    if (descriptor == watched_) {
        epoll_ctl(poll_, EPOLL_CTL_MOD, descriptor, &event);
    } else {
        if (watched_ >= 0)
            epoll_ctl(poll_, EPOLL_CTL_DEL, watched_, nullptr);
        epoll_ctl(poll_, EPOLL_CTL_ADD, descriptor, &event);
    }
    watched_ = descriptor;
    watchedEvents_ = events;
}

void Bus::setDeadline(std::uint64_t deadline) {
    if (deadline == deadline_)
        return;
    deadline_ = deadline;
    timer_.end();
    if (deadline == UINT64_MAX)
        return;
    const std::uint64_t now = monotonicTime();
    const Seconds wait = deadline > now ? static_cast<double>(deadline - now) / microseconds : 0;
    timer_ = loop_.schedule(wait, lifetime_.guard([this] {
        deadline_ = UINT64_MAX;
        if (!lost_)
            process();
    }));
}

void Bus::noticeLoss() {
    if (std::exchange(lost_, true))
        return;
    // Whoever is told may let go of us.
    source_ = {};
    setDeadline(UINT64_MAX);
    loop_.post(lifetime_.guard([this] {
        const auto onLost = std::exchange(onLost_, nullptr);
        if (onLost)
            onLost();
    }));
}

}  // namespace velmo::dbus
