// ReadBudget: the memory a reader may spend on what one file describes.
//
// Readers check every count against the bytes that hold it before they allocate. Some counts
// need no bytes (an accessor without data is all zeros; many meshes may share one block of
// data), so a reader also takes everything it allocates for the description from a budget that
// grows with the size of the input: a fixed allowance plus a multiple of the input's bytes. A
// file that would need more is refused with exceededProblem() instead of exhausting memory.
#pragma once

#include <cstdint>
#include <string>

namespace runtime {

class ReadBudget {
public:
    static constexpr std::uint64_t kBaseBytes = 64ull << 20;
    static constexpr std::uint64_t kBytesPerInputByte = 32;

    explicit ReadBudget(std::uint64_t inputBytes);

    // Takes `count` items of `bytesEach` bytes from the budget; false (and nothing taken) when
    // they do not fit.
    bool take(std::uint64_t count, std::uint64_t bytesEach);
    std::uint64_t limit() const { return m_limit; }

    // The problem to report when take() failed.
    std::string exceededProblem() const;

private:
    std::uint64_t m_inputBytes;
    std::uint64_t m_limit;
    std::uint64_t m_used = 0;
};

} // namespace runtime
