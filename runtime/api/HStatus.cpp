#include "HStatus.h"

HStatus::HStatus() : m_code(HS::kSuccess) {}
HStatus::HStatus(HS::StatusCode code) : m_code(code) {}
HStatus::HStatus(HS::StatusCode code, const HString& message) : m_code(code), m_message(message) {}

HS::StatusCode HStatus::statusCode() const {
    return m_code;
}
bool HStatus::error() const {
    return m_code != HS::kSuccess;
}

HString HStatus::errorString() const {
    if (!m_message.isEmpty())
        return m_message;
    switch (m_code) {
    case HS::kSuccess:
        return "Success";
    case HS::kFailure:
        return "Failure";
    case HS::kInvalidParameter:
        return "Invalid parameter";
    case HS::kNotFound:
        return "Not found";
    case HS::kNotImplemented:
        return "Not implemented";
    }
    return "Failure";
}

void HStatus::clear() {
    m_code = HS::kSuccess;
    m_message = HString();
}

HStatus::operator bool() const {
    return m_code == HS::kSuccess;
}
bool HStatus::operator==(const HStatus& other) const {
    return m_code == other.m_code;
}
bool HStatus::operator==(HS::StatusCode code) const {
    return m_code == code;
}
bool HStatus::operator!=(const HStatus& other) const {
    return m_code != other.m_code;
}
bool HStatus::operator!=(HS::StatusCode code) const {
    return m_code != code;
}
