// The table's clipboard text against a real spreadsheet: LibreOffice Calc opens a copied table
// as a sheet of the same names and numbers, and the sheet saved as CSV pastes back into the
// same weights. Run by make interop, which installs Calc; not part of make test.
#include "pastedText.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

class SpreadsheetInterop : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(20, 5, 3);
        selectAndLoad("body");
        QApplication::setActiveWindow(window);
        table->setFocus();
    }
    QString copyWholeTable() {
        QTest::keyClick(table, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    }
    // Runs LibreOffice headless on `arguments`, with a profile of its own in the folder.
    void office(QStringList arguments) {
        arguments.prepend("-env:UserInstallation=" +
                          QUrl::fromLocalFile(folder.filePath("profile")).toString());
        arguments.prepend("--headless");
        QProcess process;
        process.start("soffice", arguments);
        ASSERT_TRUE(process.waitForFinished(-1)) << process.errorString().toStdString();
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }
    static QString readFile(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return QString::fromUtf8(file.readAll());
    }

    fixture::SkinnedMesh body;
    QTemporaryDir folder;
};

} // namespace

TEST_F(SpreadsheetInterop, ACopiedTableOpensAsASheetAndItsCsvPastesBack) {
    const QString copied = copyWholeTable();
    QFile tabs(folder.filePath("copied.csv"));
    ASSERT_TRUE(tabs.open(QIODevice::WriteOnly));
    tabs.write(copied.toUtf8());
    tabs.close();
    // Tab-separated UTF-8 into a Calc document, and that document out again as CSV.
    office({"--infilter=CSV:9,34,76,1", "--convert-to", "ods", "--outdir", folder.path(),
            folder.filePath("copied.csv")});
    ASSERT_TRUE(QFile::exists(folder.filePath("copied.ods")));
    QDir(folder.path()).mkdir("sheet");
    office({"--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76,1", "--outdir",
            folder.filePath("sheet"), folder.filePath("copied.ods")});
    const QString sheet = readFile(folder.filePath("sheet/copied.csv"));

    // The sheet holds the same names, and numbers equal to the table's.
    const pastedText::Block expected = pastedText::read(copied);
    const pastedText::Block cells = pastedText::read(sheet);
    EXPECT_EQ(cells.columnNames, expected.columnNames);
    EXPECT_EQ(cells.rowNames, expected.rowNames);
    ASSERT_EQ(cells.values.size(), expected.values.size());
    for (int line = 0; line < expected.values.size(); ++line) {
        ASSERT_EQ(cells.values[line].size(), expected.values[line].size()) << line;
        for (int field = 0; field < expected.values[line].size(); ++field)
            EXPECT_EQ(cells.values[line][field].toDouble(), expected.values[line][field].toDouble())
                << line << ", " << field;
    }

    // Pasted back after the weights changed, the sheet gives the copied table again.
    ASSERT_TRUE(vorel::run("skinWeights -quantize 2"));
    selectAndLoad("body");
    table->setFocus();
    table->setCurrentIndex(model->index(0, 0));
    QApplication::clipboard()->setText(sheet);
    QTest::keyClick(table, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(copyWholeTable().toStdString(), copied.toStdString());
}
