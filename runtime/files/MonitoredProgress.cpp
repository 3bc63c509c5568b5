#include "files/MonitoredProgress.h"

namespace runtime {

MonitoredProgress::MonitoredProgress(const std::string& title) : m_operation(HString(title)) {}

bool MonitoredProgress::update(double fraction, const std::string& stage) {
    return m_operation.report(fraction, HString(stage));
}

} // namespace runtime
