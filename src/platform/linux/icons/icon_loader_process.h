#pragma once

#include "image.h"
#include "linux/event_loop/event_loop.h"
#include "linux/icons/icon_request.h"
#include "linux/registration.h"

#include <sys/types.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// One run of the icon loader.
class IconLoaderProcess {
public:
    using AnswerHandler = std::function<void(const std::optional<Image>&)>;

    /// Null where it cannot be started. `onEnd` is called once the process has ended.
    static std::unique_ptr<IconLoaderProcess> start(EventLoop& loop, const std::string& program,
                                                    AnswerHandler onAnswer, std::function<void()> onEnd);
    ~IconLoaderProcess();
    IconLoaderProcess(const IconLoaderProcess&) = delete;
    IconLoaderProcess& operator=(const IconLoaderProcess&) = delete;

    pid_t id() const { return id_; }
    bool hasEnded() const { return id_ <= 0; }
    /// True where a request is within its bounds.
    static bool canBeAsked(const IconRequest& request);
    /// One such request at a time. False where the process is gone.
    bool send(const IconRequest& request) const;
    /// Whatever it does, it ends; nothing is answered any longer.
    void kill();

private:
    IconLoaderProcess(EventLoop& loop, pid_t id, int socket, int handle, AnswerHandler onAnswer,
                      std::function<void()> onEnd);
    void read();
    void takeAnswer();
    void reap();

    pid_t id_;
    int socket_;
    int handle_;
    AnswerHandler onAnswer_;
    std::function<void()> onEnd_;
    std::vector<char> received_;
    Registration socketSource_;
    Registration handleSource_;
};

}  // namespace velmo
