// HStatus: the outcome of a host interface operation.
//
// Nothing throws across the host interface. Operations return an HStatus or fill an
// HStatus* out argument (which may be null). A status is a code and, for a failure, a
// message saying what went wrong. It converts to true on success.
#pragma once

#include "HString.h"

struct HS {
    enum StatusCode { kSuccess = 0, kFailure, kInvalidParameter, kNotFound, kNotImplemented };
};

class HStatus {
public:
    HStatus();
    HStatus(HS::StatusCode code);
    HStatus(HS::StatusCode code, const HString& message);

    HS::StatusCode statusCode() const;
    // True when the status is not a success.
    bool error() const;
    // The failure's message, or the code's standard text when none was given.
    HString errorString() const;
    void clear();

    explicit operator bool() const;
    bool operator==(const HStatus& other) const;
    bool operator==(HS::StatusCode code) const;
    bool operator!=(const HStatus& other) const;
    bool operator!=(HS::StatusCode code) const;

private:
    HS::StatusCode m_code;
    HString m_message;
};
