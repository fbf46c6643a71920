#pragma once

namespace kavrelon {

/// Raises a flag for the length of a scope.
class [[nodiscard]] Raised {
  public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

  private:
    bool& flag_;
};

}  // namespace kavrelon
