#include "core/ParallelParts.h"

#include <algorithm>
#include <thread>
#include <vector>

namespace runtime {

namespace {

constexpr unsigned kMaxParts = 8;

} // namespace

unsigned partCount(std::size_t count, std::size_t minimumPerPart) {
    const std::size_t hardware = std::max(1u, std::thread::hardware_concurrency());
    const std::size_t useful =
        std::max<std::size_t>(1, count / std::max<std::size_t>(1, minimumPerPart));
    return static_cast<unsigned>(std::min({hardware, useful, std::size_t(kMaxParts)}));
}

void runInParts(
    std::size_t count, unsigned parts,
    const std::function<void(unsigned part, std::size_t begin, std::size_t end)>& work) {
    parts = std::max(1u, parts);
    auto edge = [&](unsigned part) { return count * part / parts; };
    std::vector<std::thread> workers;
    for (unsigned part = 1; part < parts; ++part)
        workers.emplace_back([&, part] { work(part, edge(part), edge(part + 1)); });
    work(0, edge(0), edge(1));
    for (std::thread& worker : workers)
        worker.join();
}

} // namespace runtime
