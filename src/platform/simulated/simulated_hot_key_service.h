#pragma once

#include "hot_key_service.h"

#include <map>
#include <utility>
#include <vector>

namespace velmo {

/// Grants every combination that it was not told to refuse, also twice. It outlives what it hands out.
class SimulatedHotKeyService : public HotKeyService {
public:
    struct Request {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        HotKeyID id;
        std::uint32_t options = 0;

        bool operator==(const Request&) const = default;
    };
    enum class Action { installHandler, registerHotKey, releaseHotKey, removeHandler };
    struct Call {
        Action action;
        /// 0 where it is about the handler.
        std::uint32_t id = 0;

        bool operator==(const Call&) const = default;
    };

    std::unique_ptr<HotKeyEventHandler> installEventHandler(const HotKeyEventType& type,
                                                            Handler handler) override;
    Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, const HotKeyID& id,
                                std::uint32_t options) override;

    void setRefusesHandlers(bool refuses) { refusesHandlers_ = refuses; }
    /// The combination is answered with this status from now on, and never with a hot key, not even where the
    /// status tells of success.
    void refuse(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyStatus status) {
        refused_.insert_or_assign(std::pair(keyCode, modifiers), status);
    }
    void accept(std::uint32_t keyCode, std::uint32_t modifiers) {
        refused_.erase(std::pair(keyCode, modifiers));
    }

    /// The user presses a combination. Every hot key that stands for it is reported, in the order of
    /// registration; the result has what the handlers returned.
    std::vector<HotKeyStatus> press(std::uint32_t keyCode, std::uint32_t modifiers);
    /// Reports any event, or none, as a press.
    std::vector<HotKeyStatus> deliver(const HotKeyEvent* event);

    /// Every registration that was asked for, whatever the answer.
    const std::vector<Request>& requests() const { return requests_; }
    /// What is registered now, in the order of registration.
    const std::vector<Request>& held() const { return held_; }
    /// Event types of the handlers that are installed now.
    std::vector<HotKeyEventType> handledTypes() const;
    /// All that was asked of the service and given back to it, in order.
    const std::vector<Call>& calls() const { return calls_; }
    /// Sees each call after it was recorded, before it takes effect.
    void setCallObserver(std::function<void(const Call&)> observer) { observer_ = std::move(observer); }

private:
    struct InstalledHandler;
    class HandlerToken;
    class HotKeyToken;

    void record(const Call& call);
    void release(const HotKeyID& id);

    bool refusesHandlers_ = false;
    std::map<std::pair<std::uint32_t, std::uint32_t>, HotKeyStatus> refused_;
    std::vector<std::shared_ptr<InstalledHandler>> handlers_;
    std::vector<Request> requests_;
    std::vector<Request> held_;
    std::vector<Call> calls_;
    std::function<void(const Call&)> observer_;
};

}  // namespace velmo
