// ProgressReporter and Progress: how long work on a file tells how far it is and learns that the
// user wants it stopped.
//
// The caller (the application's progress dialog, a test) implements ProgressReporter. The work
// holds a Progress over it, splits itself into stages that each cover part of the whole, and
// reports through step(); Progress passes on at most about two hundred reports per operation, so
// work may call step() as often as it likes. Once the reporter has answered false the request
// to stop stays: every later call returns false, and the work winds down and returns a
// cancelled FileResult. The reporter is called on the thread that does the work.
#pragma once

#include <cstdint>
#include <string>

namespace runtime {

class ProgressReporter {
public:
    virtual ~ProgressReporter();
    // `fraction` of the whole work is done (0 to 1, never decreasing); `stage` says what is being
    // done, for people. Returns false to ask the work to stop.
    virtual bool update(double fraction, const std::string& stage) = 0;

    // A reporter that shows nothing and never asks to stop.
    static ProgressReporter& silent();
};

// Passes the reports of one part of a longer piece of work on to the reporter of the whole,
// as the span [from, to] of it.
class ProgressPart : public ProgressReporter {
public:
    ProgressPart(ProgressReporter& whole, double from, double to)
        : m_whole(whole), m_from(from), m_to(to) {}
    bool update(double fraction, const std::string& stage) override;

private:
    ProgressReporter& m_whole;
    double m_from;
    double m_to;
};

class Progress {
public:
    explicit Progress(ProgressReporter& reporter) : m_reporter(reporter) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Starts a stage that covers [from, to] of the whole work; a stage with new text is always
    // reported. False when asked to stop.
    bool stage(double from, double to, const std::string& text);
    // `done` of `total` units of the current stage are done. False when asked to stop.
    bool step(std::uint64_t done, std::uint64_t total);
    bool cancelled() const { return m_cancelled; }

private:
    bool report(double fraction);

    ProgressReporter& m_reporter;
    std::string m_text;
    double m_from = 0.0;
    double m_to = 0.0;
    double m_reported = -1.0;
    bool m_cancelled = false;
};

} // namespace runtime
