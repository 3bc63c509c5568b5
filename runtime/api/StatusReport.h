// StatusReport: the two status idioms of the host interface in one place: a refusal with a
// message (kInvalidParameter), and filling an optional HStatus* out argument.
#pragma once

#include "HStatus.h"

#include <string>

namespace runtime {

inline HStatus invalidParameter(const std::string& message) {
    return HStatus(HS::kInvalidParameter, message);
}

// Stores value in *out when out is given; returns value.
inline HStatus report(HStatus* out, const HStatus& value) {
    if (out)
        *out = value;
    return value;
}

} // namespace runtime
