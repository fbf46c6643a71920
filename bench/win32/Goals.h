#pragma once

#include <cmath>
#include <cstdio>
#include <string>

namespace kavrelon::bench {

/// Prints what was measured beside what it may be at most, a line each, and remembers what was missed.
class Goals {
  public:
    void hold(const std::string& what, double figure, double most) {
        const bool missed = !(figure <= most);
        std::printf("%-58s%10.*f%10.*f%s\n", what.c_str(), decimals(figure, most), figure,
                    decimals(figure, most), most, missed ? "  MISSED" : "");
        std::fflush(stdout);
        if (missed) status_ = 1;
    }
    /// A figure without a limit.
    static void tell(const std::string& what, double figure) {
        std::printf("%-58s%10.2f\n", what.c_str(), figure);
        std::fflush(stdout);
    }
    /// The program's exit status.
    int status() const { return status_; }

  private:
    /// None where both are counts.
    static int decimals(double figure, double most) {
        return std::trunc(figure) == figure && std::trunc(most) == most ? 0 : 2;
    }

    int status_ = 0;
};

}  // namespace kavrelon::bench
