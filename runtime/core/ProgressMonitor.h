// ProgressMonitor: how long work (opening or importing a large file, binding) tells the user how
// far it is and learns that they want it stopped.
//
// The work holds a ProgressOperation for its duration and calls report() with the fraction done
// (0 to 1) and a short stage text; report() returns false once the user has cancelled, and the
// work then winds down, leaving the scene as it was where it can. Operations may nest (an import
// that binds): the display is opened by the outermost one only, inner ones report through it,
// and a cancel holds for every operation until the outermost ends.
//
// The application installs a ProgressDisplay (a progress dialog); without one (batch mode,
// tests) nothing is shown and nothing is ever cancelled. The monitor does not own the display;
// whoever installs it removes it (setDisplay(nullptr)) before destroying it. Reports that move the
// fraction by less than half a percent without a new stage text are not passed on, so work may
// report as often as it likes. Everything runs on the main thread.
#pragma once

#include "HString.h"
#include "core/HostContext.h"

namespace runtime {

class ProgressDisplay {
public:
    virtual ~ProgressDisplay();
    // An operation starts; title says what it is ("Opening body.glb").
    virtual void begin(const HString& title) = 0;
    // Returns false when the user asked to stop.
    virtual bool update(double fraction, const HString& stage) = 0;
    virtual void end() = 0;
};

class ProgressMonitor : public HostModule {
public:
    // Null: nothing is shown. Replacing the display while an operation is shown ends the
    // operation on the old display first, so the old one may be destroyed right after.
    void setDisplay(ProgressDisplay* display);
    ProgressDisplay* display() const { return m_display; }

    // Whether an operation is under way.
    bool busy() const { return m_depth > 0; }

private:
    friend class ProgressOperation;
    void begin(const HString& title);
    bool report(double fraction, const HString& stage);
    void end();

    ProgressDisplay* m_display = nullptr;
    // The display the outermost operation began on: it ends on the same one.
    ProgressDisplay* m_shown = nullptr;
    unsigned m_depth = 0;
    bool m_cancelled = false;
    double m_reported = -1.0;
    HString m_stage;
};

class ProgressOperation {
public:
    explicit ProgressOperation(const HString& title);
    ~ProgressOperation();
    ProgressOperation(const ProgressOperation&) = delete;
    ProgressOperation& operator=(const ProgressOperation&) = delete;

    // False when the user cancelled (now or earlier).
    bool report(double fraction, const HString& stage);
    bool cancelled() const { return m_monitor.m_cancelled; }

private:
    ProgressMonitor& m_monitor;
};

} // namespace runtime
