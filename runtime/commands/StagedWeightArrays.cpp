#include "commands/StagedWeightArrays.h"

namespace runtime {

namespace {

const bool registered = registerHostModule(kCommandsRank, [](HostContext&) {
    return std::unique_ptr<HostModule>(new StagedWeightArrays);
});

} // namespace

unsigned StagedWeightArrays::stage(StagedWeightArray array) {
    m_arrays.emplace(++m_last, std::move(array));
    return m_last;
}

void StagedWeightArrays::release(unsigned number) {
    m_arrays.erase(number);
}

const StagedWeightArray* StagedWeightArrays::find(unsigned number) const {
    auto found = m_arrays.find(number);
    return found == m_arrays.end() ? nullptr : &found->second;
}

} // namespace runtime
