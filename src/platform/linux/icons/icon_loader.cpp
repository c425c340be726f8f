#include "icon_loader.h"

#include "linux/icons/icon_protocol.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

/// From the request to the answer, with the start of the process.
constexpr Seconds timeLimit = 3;
/// The process ends by itself two seconds before.
constexpr Seconds mostIdleTime = icon_protocol::idleMilliseconds / 1000.0 + 2;
/// A process that ends, because it was idle, just when it gets a request is no reason to give up.
constexpr int mostAttempts = 2;
constexpr std::size_t mostCached = 64;
/// More than all items of a bar and a menu have.
constexpr std::size_t mostWaiting = 3000;

/// A name of the theme stands for the same picture for long; what lies in a program's own folder may change
/// under its name.
bool isLasting(const IconRequest& request) {
    return request.folder.empty() && request.data.empty() && !request.name.starts_with('/');
}

}  // namespace

IconLoader::IconLoader(EventLoop& loop, std::string program)
    : loop_(loop),
      program_(std::move(program)),
      tidying_(loop,
               [this] { std::erase_if(ending_, [](const auto& process) { return process->hasEnded(); }); }),
      continuing_(loop, [this] { next(); }) {}

pid_t IconLoader::processIdentifier() const {
    return process_ ? process_->id() : 0;
}

Registration IconLoader::load(const IconRequest& request, Handler handler) {
    if (waiting_.size() >= mostWaiting)
        dismissCancelled();
    auto waiting = std::make_shared<Waiting>(Waiting{request, std::move(handler), 0});
    if (const auto* known = recall(request)) {
        loop_.post([waiting, icon = known->second] { finish(*waiting, icon); });
    } else if (waiting_.size() >= mostWaiting) {
        loop_.post([waiting] { finish(*waiting, std::nullopt); });
    } else {
        waiting_.push_back(waiting);
        continuing_.request();
    }
    return Registration([waiting] { waiting->handler = nullptr; });
}

void IconLoader::dismissCancelled() {
    std::erase_if(waiting_, [](const auto& waiting) { return !waiting->handler; });
}

void IconLoader::next() {
    dismissCancelled();
    while (!asked_ && !waiting_.empty()) {
        auto waiting = takeNext();
        // Whoever has been answered before may have cancelled it.
        if (!waiting->handler)
            continue;
        if (!IconLoaderProcess::canBeAsked(waiting->request)) {
            finish(*waiting, std::nullopt);
        } else if (ensureProcess()) {
            ask(std::move(waiting));
        } else {
            waiting_.push_back(std::move(waiting));
            giveUp();
        }
    }
}

/// One attempt to start the process is enough for all who wait.
void IconLoader::giveUp() {
    for (const auto& waiting : std::exchange(waiting_, {}))
        finish(*waiting, std::nullopt);
}

IconLoader::WaitingReference IconLoader::takeNext() {
    const auto first =
        std::min_element(waiting_.begin(), waiting_.end(), [this](const auto& left, const auto& right) {
            return startOf(left->request.owner) < startOf(right->request.owner);
        });
    auto waiting = *first;
    waiting_.erase(first);
    return waiting;
}

Seconds IconLoader::startOf(const std::string& owner) const {
    const auto spent = spent_.find(owner);
    return spent == spent_.end() ? turn_ : std::max(spent->second, turn_);
}

void IconLoader::ask(WaitingReference waiting) {
    ++waiting->attempts;
    if (!process_->send(waiting->request)) {
        letGoOfProcess();
        tryAgain(std::move(waiting));
        return;
    }
    asked_ = std::move(waiting);
    askedAt_ = std::chrono::steady_clock::now();
    limit_ = loop_.schedule(timeLimit, lifetime_.guard([this] { overdue(); }));
}

bool IconLoader::ensureProcess() {
    if (!process_) {
        process_ = IconLoaderProcess::start(
            loop_, program_, [this](const auto& icon) { answered(icon); }, [this] { processEnded(); });
    }
    return process_ != nullptr;
}

void IconLoader::answered(const std::optional<Image>& icon) {
    if (!asked_) {
        // It would answer without end.
        letGoOfProcess();
        return;
    }
    const auto waiting = endAsking();
    limit_ = loop_.schedule(mostIdleTime, lifetime_.guard([this] { letGoOfProcess(); }));
    const auto others = remember(waiting->request, icon);
    finish(*waiting, icon);
    for (const auto& other : others)
        finish(*other, icon);
}

IconLoader::WaitingReference IconLoader::endAsking() {
    limit_.end();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - askedAt_;
    const auto& owner = asked_->request.owner;
    turn_ = startOf(owner);
    spent_[owner] = turn_ + passed.count();
    // Nobody is behind those who wait.
    std::erase_if(spent_, [this](const auto& entry) { return entry.second <= turn_; });
    continuing_.request();
    return std::exchange(asked_, nullptr);
}

void IconLoader::finish(const Waiting& waiting, const std::optional<Image>& icon) {
    // A copy, because the handler may end its registration.
    if (const auto handler = waiting.handler)
        handler(icon);
}

void IconLoader::tryAgain(WaitingReference waiting) {
    if (waiting->attempts >= mostAttempts)
        finish(*waiting, std::nullopt);
    else
        waiting_.push_front(std::move(waiting));
}

void IconLoader::overdue() {
    letGoOfProcess();
    tryAgain(endAsking());
}

void IconLoader::letGoOfProcess() {
    limit_.end();
    process_->kill();
    ending_.push_back(std::move(process_));
}

void IconLoader::processEnded() {
    if (process_ && process_->hasEnded()) {
        letGoOfProcess();
        if (asked_)
            tryAgain(endAsking());
    }
    tidying_.request();
}

const IconLoader::Cached* IconLoader::recall(const IconRequest& request) {
    for (auto place = cache_.begin(); place != cache_.end(); ++place) {
        if (place->first.isSame(request)) {
            cache_.splice(cache_.begin(), cache_, place);
            return &cache_.front();
        }
    }
    return nullptr;
}

std::vector<IconLoader::WaitingReference> IconLoader::remember(const IconRequest& request,
                                                               const std::optional<Image>& icon) {
    std::vector<WaitingReference> same;
    if (!isLasting(request))
        return same;
    cache_.emplace_front(request, icon);
    if (cache_.size() > mostCached)
        cache_.pop_back();
    std::erase_if(waiting_, [&](const auto& waiting) {
        const bool isSame = waiting->request.isSame(request);
        if (isSame)
            same.push_back(waiting);
        return isSame;
    });
    return same;
}

}  // namespace velmo
