#pragma once

namespace kavrelon {

/// Lets the thread's pending messages through. Stops after a while even if messages keep coming, so that a
/// flood of them cannot hold the host. A request to quit is left for the host's own message loop.
void letMessagesThrough();

}  // namespace kavrelon
