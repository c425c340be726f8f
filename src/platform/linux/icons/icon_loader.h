#pragma once

#include "image.h"
#include "lifetime.h"
#include "linux/event_loop/event_loop.h"
#include "linux/event_loop/posted_once.h"
#include "linux/icons/icon_loader_process.h"
#include "linux/icons/icon_request.h"
#include "linux/registration.h"
#include "scoped_timer.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo {

/// Finds and decodes icon files in a process of its own, which a bad file may crash or keep busy without
/// harm. The process starts when it is needed and ends by itself when it is not; one that does not, or that
/// answers unasked, is ended.
class IconLoader {
public:
    using Handler = std::function<void(const std::optional<Image>&)>;

    /// `program` is the loader's executable; where it is missing, no icon can be had.
    IconLoader(EventLoop& loop, std::string program);
    IconLoader(const IconLoader&) = delete;
    IconLoader& operator=(const IconLoader&) = delete;

    /// The picture covers as many points as it has pixels. Answers in a later turn of the loop, with nothing
    /// where the icon cannot be had or too many wait, unless the registration has ended before.
    [[nodiscard]] Registration load(const IconRequest& request, Handler handler);
    /// The loader's process at present, 0 for none.
    pid_t processIdentifier() const;

private:
    struct Waiting {
        IconRequest request;
        /// Empty once nobody wants the icon any longer.
        Handler handler;
        int attempts = 0;
    };
    using Cached = std::pair<IconRequest, std::optional<Image>>;

    using WaitingReference = std::shared_ptr<Waiting>;

    void next();
    /// Takes it out of those that wait: of the one who has had the least time so far.
    WaitingReference takeNext();
    void dismissCancelled();
    void giveUp();
    bool ensureProcess();
    void ask(WaitingReference waiting);
    void answered(const std::optional<Image>& icon);
    static void finish(const Waiting& waiting, const std::optional<Image>& icon);
    void tryAgain(WaitingReference waiting);
    void overdue();
    void processEnded();
    void letGoOfProcess();
    /// Takes the one that the process has.
    WaitingReference endAsking();
    Seconds startOf(const std::string& owner) const;
    /// Null where it is not known.
    const Cached* recall(const IconRequest& request);
    /// Returns whoever waits for the same icon, and waits no longer.
    std::vector<WaitingReference> remember(const IconRequest& request, const std::optional<Image>& icon);

    EventLoop& loop_;
    std::string program_;
    std::deque<WaitingReference> waiting_;
    /// The one that the process has. Null for none.
    WaitingReference asked_;
    std::chrono::steady_clock::time_point askedAt_;
    /// The time that each owner has had, where that is more than `turn_`: how far those are who wait.
    std::map<std::string, Seconds> spent_;
    Seconds turn_ = 0;
    std::unique_ptr<IconLoaderProcess> process_;
    /// Told to end, but not gone yet.
    std::vector<std::unique_ptr<IconLoaderProcess>> ending_;
    ScopedTimer limit_;
    /// The most recently used first.
    std::list<Cached> cache_;
    PostedOnce tidying_;
    PostedOnce continuing_;
    Lifetime lifetime_;
};

}  // namespace velmo
