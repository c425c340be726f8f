#include "icon_loader.h"

namespace velmo {

namespace {

/// From the request to the answer, with the start of the process.
constexpr Seconds timeLimit = 3;
/// A process that ends, because it was idle, just when it gets a request is no reason to give up.
constexpr int mostAttempts = 2;
constexpr std::size_t mostCached = 64;
constexpr std::size_t mostWaiting = 2000;

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

IconLoader::~IconLoader() {
    if (limit_)
        limit_->invalidate();
}

pid_t IconLoader::processIdentifier() const {
    return process_ ? process_->id() : 0;
}

Registration IconLoader::load(const IconRequest& request, Handler handler) {
    if (waiting_.size() >= mostWaiting)
        return {};
    auto waiting = std::make_shared<Waiting>(Waiting{request, std::move(handler), 0});
    waiting_.push_back(waiting);
    continuing_.request();
    return Registration([waiting] { waiting->handler = nullptr; });
}

void IconLoader::next() {
    while (!isBusy_ && !waiting_.empty()) {
        const auto& first = *waiting_.front();
        if (!first.handler) {
            waiting_.pop_front();
        } else if (const auto* known = recall(first.request)) {
            finish(known->second);
        } else if (ensureProcess() && process_->send(first.request)) {
            isBusy_ = true;
            ++waiting_.front()->attempts;
            limit_ = loop_.schedule(timeLimit, lifetime_.guard([this] { overdue(); }));
        } else {
            finish(std::nullopt);
        }
    }
}

bool IconLoader::ensureProcess() {
    if (!process_) {
        process_ = IconLoaderProcess::start(
            loop_, program_, [this](const auto& icon) { answered(icon); }, [this] { processEnded(); });
    }
    return process_ != nullptr;
}

void IconLoader::answered(const std::optional<Image>& icon) {
    if (!isBusy_)
        return;
    isBusy_ = false;
    limit_->invalidate();
    remember(waiting_.front()->request, icon);
    finish(icon);
    continuing_.request();
}

void IconLoader::finish(const std::optional<Image>& icon) {
    const auto waiting = waiting_.front();
    waiting_.pop_front();
    // A copy, because the handler may end its registration.
    if (const auto handler = waiting->handler)
        handler(icon);
}

void IconLoader::overdue() {
    process_->kill();
    ending_.push_back(std::move(process_));
    isBusy_ = false;
    remember(waiting_.front()->request, std::nullopt);
    finish(std::nullopt);
    continuing_.request();
}

void IconLoader::processEnded() {
    if (process_ && process_->hasEnded()) {
        ending_.push_back(std::move(process_));
        if (isBusy_) {
            isBusy_ = false;
            limit_->invalidate();
            if (waiting_.front()->attempts >= mostAttempts)
                finish(std::nullopt);
        }
        continuing_.request();
    }
    tidying_.request();
}

const IconLoader::Cached* IconLoader::recall(const IconRequest& request) {
    for (auto place = cache_.begin(); place != cache_.end(); ++place) {
        if (place->first == request) {
            cache_.splice(cache_.begin(), cache_, place);
            return &cache_.front();
        }
    }
    return nullptr;
}

void IconLoader::remember(const IconRequest& request, const std::optional<Image>& icon) {
    if (!isLasting(request))
        return;
    cache_.emplace_front(request, icon);
    if (cache_.size() > mostCached)
        cache_.pop_back();
}

}  // namespace velmo
