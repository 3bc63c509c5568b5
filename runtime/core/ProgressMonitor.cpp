#include "core/ProgressMonitor.h"

#include <algorithm>
#include <cmath>

namespace runtime {

namespace {

// Reports closer together than this share of the whole, with the same stage, are dropped.
constexpr double kReportSpacing = 0.005;

const bool registered = registerHostModule(
    kProgressRank, [](HostContext&) { return std::unique_ptr<HostModule>(new ProgressMonitor); });

} // namespace

ProgressDisplay::~ProgressDisplay() = default;

void ProgressMonitor::setDisplay(ProgressDisplay* display) {
    if (m_shown && m_shown != display) {
        m_shown->end();
        m_shown = nullptr;
    }
    m_display = display;
}

void ProgressMonitor::begin(const HString& title) {
    if (m_depth++ > 0)
        return;
    m_cancelled = false;
    m_reported = -1.0;
    m_stage = HString();
    m_shown = m_display;
    if (m_shown)
        m_shown->begin(title);
}

bool ProgressMonitor::report(double fraction, const HString& stage) {
    if (m_cancelled)
        return false;
    fraction = std::clamp(fraction, 0.0, 1.0);
    bool newStage = !(stage == m_stage);
    if (!newStage && m_reported >= 0.0 && std::abs(fraction - m_reported) < kReportSpacing)
        return true;
    m_reported = fraction;
    m_stage = stage;
    if (m_shown && !m_shown->update(fraction, stage))
        m_cancelled = true;
    return !m_cancelled;
}

void ProgressMonitor::end() {
    if (--m_depth > 0)
        return;
    if (m_shown)
        m_shown->end();
    m_shown = nullptr;
}

ProgressOperation::ProgressOperation(const HString& title)
    : m_monitor(host().get<ProgressMonitor>()) {
    m_monitor.begin(title);
}

ProgressOperation::~ProgressOperation() {
    m_monitor.end();
}

bool ProgressOperation::report(double fraction, const HString& stage) {
    return m_monitor.report(fraction, stage);
}

} // namespace runtime
