// MonitoredProgress: the progress of one piece of work on a file (opening, importing, saving,
// exporting) shown to the user through the host's ProgressMonitor, which the application
// displays as a progress dialog with a Cancel button.
//
// Whoever starts the work (the `file` command) makes one with a title for people ("Opening
// body.glb") and hands it to the reader or writer as its ProgressReporter; the operation begins
// when the object is made and ends when it goes. A cancel from the user is answered to the
// reader or writer, which then winds down and reports a cancelled FileResult. Without a
// display (batch mode, tests) nothing is shown and nothing is cancelled. Needs the running host.
#pragma once

#include "core/ProgressMonitor.h"
#include "files/ProgressReporter.h"

#include <string>

namespace runtime {

class MonitoredProgress : public ProgressReporter {
public:
    explicit MonitoredProgress(const std::string& title);

    bool update(double fraction, const std::string& stage) override;

private:
    ProgressOperation m_operation;
};

} // namespace runtime
