#include "ProgressDialog.h"

#include "windowFixture.h"

#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using ProgressDialogTest = appfixture::WindowTest;

// How long to wait for the dialog before giving up: far beyond the delay, so that only a
// dialog that never shows fails, however busy the machine.
constexpr int kPatienceMs = 120000;

TEST_F(ProgressDialogTest, ShowsLongWorkAfterADelayAndCancelStopsIt) {
    app::ProgressDialog& progress = window().progress();
    {
        runtime::ProgressOperation operation("Opening big.glb");
        QProgressDialog* dialog = progress.dialog();
        ASSERT_NE(dialog, nullptr);
        // Work that ends within the delay shows nothing: the dialog waits that long first.
        EXPECT_EQ(dialog->minimumDuration(), app::ProgressDialog::kShowDelayMs);
        EXPECT_FALSE(dialog->isVisible());

        // Work that goes on past the delay shows the dialog, while Qt handles events.
        ASSERT_TRUE(QTest::qWaitFor([dialog] { return dialog->isVisible(); }, kPatienceMs));
        EXPECT_TRUE(operation.report(0.5, "Reading skins"));
        EXPECT_EQ(dialog->labelText(), "Opening big.glb\nReading skins");
        EXPECT_EQ(dialog->value(), app::ProgressDialog::kSteps / 2);

        dialog->findChild<QPushButton*>()->click();
        EXPECT_FALSE(operation.report(0.6, "Reading skins"));
        EXPECT_TRUE(operation.cancelled());
    }
    EXPECT_EQ(progress.dialog(), nullptr);

    // The next operation starts afresh.
    runtime::ProgressOperation next("Binding");
    EXPECT_TRUE(next.report(0.2, "Weights"));
    EXPECT_FALSE(next.cancelled());
}

} // namespace
