#include "ProgressDialog.h"

#include "windowFixture.h"

#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using ProgressDialogTest = appfixture::WindowTest;

TEST_F(ProgressDialogTest, ShowsLongWorkAfterADelayAndCancelStopsIt) {
    app::ProgressDialog& progress = window().progress();
    {
        runtime::ProgressOperation operation("Opening big.glb");
        EXPECT_TRUE(operation.report(0.1, "Reading meshes"));
        QProgressDialog* dialog = progress.dialog();
        ASSERT_NE(dialog, nullptr);
        // Short work never shows a dialog.
        EXPECT_FALSE(dialog->isVisible());

        QTest::qWait(app::ProgressDialog::kShowDelayMs + 200);
        EXPECT_TRUE(operation.report(0.5, "Reading skins"));
        EXPECT_TRUE(dialog->isVisible());
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
