#pragma once

namespace velmo {

/// Returns once the server has done all that the toolkit has asked so far, so that others can go on with a
/// window. QGuiApplication::sync would let other things happen meanwhile.
void awaitServer();

}  // namespace velmo
