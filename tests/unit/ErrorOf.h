#pragma once

#include "support/RuntimeError.h"

namespace kavrelon {

/// The run-time error that a call raises, 0 when it does not fail.
template <class Call>
int errorOf(Call&& call) {
    try {
        call();
    } catch (const RuntimeError& error) {
        return static_cast<int>(error.number());
    }
    return 0;
}

}  // namespace kavrelon
