#include "files/ProgressReporter.h"

#include <algorithm>

namespace runtime {

namespace {

// Reports closer together than this share of the whole are dropped.
constexpr double kReportSpacing = 0.005;

class SilentReporter : public ProgressReporter {
public:
    bool update(double, const std::string&) override { return true; }
};

} // namespace

ProgressReporter::~ProgressReporter() = default;

ProgressReporter& ProgressReporter::silent() {
    static SilentReporter reporter;
    return reporter;
}

bool ProgressPart::update(double fraction, const std::string& stage) {
    return m_whole.update(m_from + (m_to - m_from) * fraction, stage);
}

bool Progress::stage(double from, double to, const std::string& text) {
    m_from = from;
    m_to = to;
    if (text != m_text) {
        m_text = text;
        return report(from); // new words are always shown
    }
    return step(0, 1);
}

bool Progress::step(std::uint64_t done, std::uint64_t total) {
    double part = total == 0 ? 1.0 : static_cast<double>(std::min(done, total)) / total;
    double fraction = m_from + (m_to - m_from) * part;
    if (!m_cancelled && m_reported >= 0.0 && fraction - m_reported < kReportSpacing)
        return true;
    return report(fraction);
}

bool Progress::report(double fraction) {
    if (m_cancelled)
        return false;
    m_reported = fraction;
    m_cancelled = !m_reporter.update(fraction, m_text);
    return !m_cancelled;
}

} // namespace runtime
