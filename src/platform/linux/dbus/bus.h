#pragma once

#include "lifetime.h"
#include "linux/event_loop/event_loop.h"
#include "linux/registration.h"
#include "scoped_timer.h"

#include <systemd/sd-bus.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace velmo::dbus {

/// How long an answer is waited for.
inline constexpr Seconds answerLimit = 3;
/// The bus itself, on which its paths and interfaces are named alike.
inline constexpr const char* daemonName = "org.freedesktop.DBus";
inline constexpr const char* daemonPath = "/org/freedesktop/DBus";

struct MethodCall {
    std::string destination;
    std::string path;
    std::string interface;
    std::string member;
    /// Appends the arguments. A negative result keeps the call from being made.
    std::function<int(sd_bus_message*)> arguments;
    Seconds limit = answerLimit;
    /// Whether the bus starts the destination where it is not there.
    bool startsDestination = false;
};

/// What a call has come to.
struct Answer {
    /// Null where the call has failed: refused, not answered within its time, or made after the bus has gone.
    /// What is under way when the bus goes is never answered.
    sd_bus_message* message = nullptr;
    /// Name of the error, or empty.
    std::string error;
};

/// True for the errors that stand for no answer at all.
bool isSilence(const std::string& error);

/// A connection to a message bus. It never waits: everything is sent and received as the loop finds
/// the connection ready, a few messages a turn, so that a flood leaves room for other work.
class Bus {
public:
    using SignalHandler = std::function<void(sd_bus_message*)>;
    using AnswerHandler = std::function<void(const Answer&)>;

    /// Begins to connect. Null where the address is of no use or nobody listens there; `isMalformed`
    /// tells the two apart. `onLost` is called once, in a turn of its own, when the connection has gone.
    static std::shared_ptr<Bus> open(EventLoop& loop, const std::string& address,
                                     std::function<void()> onLost, bool& isMalformed);
    ~Bus();
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    /// Empty until the bus has told it.
    std::string uniqueName() const;
    /// From now on calls come to nothing and nothing arrives.
    void close();

    /// Neither handler is called any longer once its registration has ended.
    [[nodiscard]] Registration call(const MethodCall& call, AnswerHandler onAnswer);
    /// Asks the bus itself about a name, and again where our loop was too busy to read its answer in time.
    [[nodiscard]] Registration askAbout(const std::string& name, const std::string& member,
                                        AnswerHandler onAnswer);
    /// `onOwner` is told the owner's unique name, empty for none.
    [[nodiscard]] Registration askForOwner(const std::string& name,
                                           std::function<void(const std::string&)> onOwner);
    /// Wants no answer.
    void send(const MethodCall& call);
    /// `match` is a match rule of the bus.
    [[nodiscard]] Registration onSignal(const std::string& match, SignalHandler handler);
    /// Called with the new owner's unique name, empty for none, whenever a name changes hands.
    [[nodiscard]] Registration onOwnerChange(const std::string& name,
                                             std::function<void(const std::string&)> handler);
    /// Takes part as an object. `context` stays valid until the registration has ended.
    [[nodiscard]] Registration addObject(const std::string& path, const std::string& interface,
                                         const sd_bus_vtable* table, void* context);
    void emit(const std::string& path, const std::string& interface, const std::string& member,
              const std::function<int(sd_bus_message*)>& arguments);

private:
    Bus(EventLoop& loop, sd_bus* bus, std::function<void()> onLost);
    /// Null where the arguments or the connection do not allow it.
    sd_bus_message* newCall(const MethodCall& call) const;
    struct Question;

    void ask(const std::shared_ptr<Question>& question);
    void process();
    void prepareToWait();
    void watch();
    void setDeadline(std::uint64_t deadline);
    void noticeLoss();

    EventLoop& loop_;
    sd_bus* bus_;
    std::function<void()> onLost_;
    /// The loop waits for descriptors to become readable; this one becomes it, whatever the connection
    /// waits for.
    int poll_;
    int watched_ = -1;
    int watchedEvents_ = 0;
    std::uint64_t deadline_ = UINT64_MAX;
    ScopedTimer timer_;
    bool lost_ = false;
    bool morePosted_ = false;
    Registration source_;
    Registration beforeSleep_;
    Lifetime lifetime_;
};

}  // namespace velmo::dbus
