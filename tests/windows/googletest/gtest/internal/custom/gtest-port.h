// GoogleTest's place for a port's own definitions: stands in for the empty file of that name in its sources.
// The win32 thread variant of the compiler has no std::mutex; the class below is the one thing that
// GoogleTest builds on it for Windows.
#pragma once

#include <atomic>

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {

/// Lets the threads that GoogleTest starts wait until their owner has finished setting them up.
class Notification {
  public:
    void Notify() { notified_ = true; }
    void WaitForNotification() {
        while (!notified_) {
        }
    }

  private:
    std::atomic<bool> notified_{false};
};

}  // namespace testing::internal
