#pragma once

#include <cstddef>
#include <functional>
#include <new>

namespace kavrelon {

/// Makes one allocation fail, as it does when memory runs out. For programs that link `failing_new`, which
/// replaces the program's operator new; over-aligned types and malloc are left alone.
///
/// To fail each allocation of a piece of work in turn, begin at 1 and stop when none has failed:
///
///     for (std::size_t n = 1;; ++n) {
///         const FailNth fail(n);
///         work();  // expectations belong after the scope: they allocate too
///         if (!fail.failed()) break;
///     }
class FailNth {
  public:
    /// The n-th allocation from here on, counted from 1, throws std::bad_alloc. Those after it do not.
    explicit FailNth(std::size_t n);
    /// Ends that. One at a time.
    ~FailNth();
    FailNth(const FailNth&) = delete;
    FailNth& operator=(const FailNth&) = delete;

    /// Whether that allocation was reached.
    bool failed() const;
};

/// Carries out a step while one allocation fails. What is raised, if anything.
struct Outcome {
    bool failed = false;
    bool raised = false;
};
inline Outcome withFailure(std::size_t n, const std::function<void()>& step) {
    bool raised = false;
    const FailNth fail(n);
    try {
        step();
    } catch (const std::bad_alloc&) {
        raised = true;
    }
    return {fail.failed(), raised};
}

}  // namespace kavrelon
