#include "simulated/simulated_hot_key_service.h"

#include <algorithm>

namespace velmo {

struct SimulatedHotKeyService::InstalledHandler {
    HotKeyEventType type;
    Handler handler;
};

class SimulatedHotKeyService::HandlerToken : public HotKeyEventHandler {
public:
    HandlerToken(SimulatedHotKeyService& service, std::shared_ptr<InstalledHandler> handler)
        : service_(service), handler_(std::move(handler)) {}
    HandlerToken(const HandlerToken&) = delete;
    HandlerToken& operator=(const HandlerToken&) = delete;
    ~HandlerToken() override {
        service_.record({Action::removeHandler});
        std::erase(service_.handlers_, handler_);
    }

private:
    SimulatedHotKeyService& service_;
    std::shared_ptr<InstalledHandler> handler_;
};

class SimulatedHotKeyService::HotKeyToken : public HotKey {
public:
    HotKeyToken(SimulatedHotKeyService& service, const HotKeyID& id) : service_(service), id_(id) {}
    HotKeyToken(const HotKeyToken&) = delete;
    HotKeyToken& operator=(const HotKeyToken&) = delete;
    ~HotKeyToken() override { service_.release(id_); }

private:
    SimulatedHotKeyService& service_;
    HotKeyID id_;
};

std::unique_ptr<HotKeyEventHandler> SimulatedHotKeyService::installEventHandler(const HotKeyEventType& type,
                                                                                Handler handler) {
    record({Action::installHandler});
    if (refusesHandlers_)
        return nullptr;
    handlers_.push_back(std::make_shared<InstalledHandler>(InstalledHandler{type, std::move(handler)}));
    return std::make_unique<HandlerToken>(*this, handlers_.back());
}

HotKeyService::Registration SimulatedHotKeyService::registerHotKey(std::uint32_t keyCode,
                                                                   std::uint32_t modifiers,
                                                                   const HotKeyID& id,
                                                                   std::uint32_t options) {
    record({Action::registerHotKey, id.id});
    requests_.push_back({keyCode, modifiers, id, options});
    if (const auto refusal = refused_.find({keyCode, modifiers}); refusal != refused_.end())
        return {refusal->second, nullptr};
    held_.push_back(requests_.back());
    return {0, std::make_unique<HotKeyToken>(*this, id)};
}

std::vector<HotKeyStatus> SimulatedHotKeyService::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    std::vector<HotKeyStatus> results;
    const auto held = held_;
    for (const Request& request : held) {
        if (request.keyCode != keyCode || request.modifiers != modifiers)
            continue;
        const HotKeyEvent event{request.id};
        const auto returned = deliver(&event);
        results.insert(results.end(), returned.begin(), returned.end());
    }
    return results;
}

std::vector<HotKeyStatus> SimulatedHotKeyService::deliver(const HotKeyEvent* event) {
    std::vector<HotKeyStatus> results;
    const auto handlers = handlers_;
    for (const auto& installed : handlers) {
        if (installed->type == hotKeyPressed)
            results.push_back(installed->handler(event));
    }
    return results;
}

std::vector<HotKeyEventType> SimulatedHotKeyService::handledTypes() const {
    std::vector<HotKeyEventType> types;
    for (const auto& installed : handlers_)
        types.push_back(installed->type);
    return types;
}

void SimulatedHotKeyService::record(const Call& call) {
    calls_.push_back(call);
    if (observer_)
        observer_(call);
}

void SimulatedHotKeyService::release(const HotKeyID& id) {
    record({Action::releaseHotKey, id.id});
    const auto found =
        std::find_if(held_.begin(), held_.end(), [&id](const Request& request) { return request.id == id; });
    if (found != held_.end())
        held_.erase(found);
}

}  // namespace velmo
