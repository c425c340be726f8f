#include "preferences/sandbox.h"

namespace velmo {

bool isSandboxed(const ProcessInfo& processInfo) {
    static const bool sandboxed = environmentTellsSandbox(processInfo);
    return sandboxed;
}

bool environmentTellsSandbox(const ProcessInfo& processInfo) {
    return processInfo.environment("APP_SANDBOX_CONTAINER_ID").has_value();
}

}  // namespace velmo
