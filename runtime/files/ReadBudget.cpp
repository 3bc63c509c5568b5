#include "files/ReadBudget.h"

#include <limits>

namespace runtime {

ReadBudget::ReadBudget(std::uint64_t inputBytes)
    : m_inputBytes(inputBytes), m_limit(kBaseBytes + kBytesPerInputByte * inputBytes) {}

bool ReadBudget::take(std::uint64_t count, std::uint64_t bytesEach) {
    if (bytesEach != 0 && count > std::numeric_limits<std::uint64_t>::max() / bytesEach)
        return false;
    std::uint64_t bytes = count * bytesEach;
    if (bytes > m_limit - m_used)
        return false;
    m_used += bytes;
    return true;
}

std::string ReadBudget::exceededProblem() const {
    return "its counts would need more than " + std::to_string(m_limit >> 20) +
           " MB of memory, far more than a file of " + std::to_string(m_inputBytes) +
           " bytes can hold";
}

} // namespace runtime
