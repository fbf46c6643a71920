#pragma once

#include <cmath>
#include <cstdio>
#include <string>

namespace kavrelon::bench {

/// Prints what was measured beside its limit, a line each, and remembers what was missed.
class Goals {
  public:
    void hold(const std::string& what, double figure, double most) {
        judge(what, figure, most, figure <= most);
    }
    /// For counts that cannot be less: a lower one says that the counting has failed.
    void holdExactly(const std::string& what, double figure, double wanted) {
        judge(what, figure, wanted, figure == wanted);
    }
    /// A figure without a limit.
    static void tell(const std::string& what, double figure) {
        std::printf("%-58s%10.2f\n", what.c_str(), figure);
        std::fflush(stdout);
    }
    /// The program's exit status.
    int status() const { return status_; }

  private:
    void judge(const std::string& what, double figure, double limit, bool held) {
        std::printf("%-58s%10.*f%10.*f%s\n", what.c_str(), decimals(figure, limit), figure,
                    decimals(figure, limit), limit, held ? "" : "  MISSED");
        std::fflush(stdout);
        if (!held) status_ = 1;
    }
    /// None where both are counts.
    static int decimals(double figure, double most) {
        return std::trunc(figure) == figure && std::trunc(most) == most ? 0 : 2;
    }

    int status_ = 0;
};

}  // namespace kavrelon::bench
