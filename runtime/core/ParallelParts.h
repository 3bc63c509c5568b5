// ParallelParts: long loops over many items split into consecutive parts that run on threads of
// their own, for work on large meshes whose items do not depend on each other.
//
// partCount() says how many parts a loop of `count` items gets: one per hardware thread (eight
// at most), but never parts of fewer than `minimumPerPart` items, where starting a thread costs
// more than it saves; at least one. runInParts() calls work(part, begin, end) for each part
// [begin, end) of [0, count), part 0 on the calling thread, and returns once all are done.
// Parts are as equal as they can be and in order, so results kept per part join in item order.
// The work must not touch shared state without its own guard.
#pragma once

#include <cstddef>
#include <functional>

namespace runtime {

unsigned partCount(std::size_t count, std::size_t minimumPerPart);
void runInParts(std::size_t count, unsigned parts,
                const std::function<void(unsigned part, std::size_t begin, std::size_t end)>& work);

} // namespace runtime
