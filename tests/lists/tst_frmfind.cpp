#include "listfixture.h"
#include "lists/finditem.h"
#include "lists/frmfind.h"

#include "core/scriptedprompt.h"
#include "views/childwindows.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeView>

namespace {
struct RecordingStatus : FindStatus {
    QStringList status, loadTime;
    void setStatus(const QString& t) override { status << t; }
    void setLoadTime(const QString& t) override { loadTime << t; }
};
} // namespace

class TestFrmFind : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void captionsAndStart();
    void buttonFollowsTheText();
    void markAllSwitchesCaptionAndDirection();
    void findNextSelectsAndStaysOpen();
    void notFoundShowsTheBox();
    void upwardsFromTheSelection();
    void findAllMarksSelectsLastAndCloses();
    void cancelCloses();

private:
    void select(int row);
    int selectedRow() const;
    std::unique_ptr<ListDb> m_db;
    std::unique_ptr<ListModel> m_model;
    std::unique_ptr<QTreeView> m_view;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    RecordingStatus m_status;
    QPointer<frmFind> m_find;
};

void TestFrmFind::init() {
    m_db = std::make_unique<ListDb>(QStringList{
        "CREATE TABLE E (EQUIPMENT_NAME VARCHAR(50), TYPE VARCHAR(20))", "INSERT INTO E VALUES ('Alpha Beam', 'Beam')",
        "INSERT INTO E VALUES ('Beta Shield', 'Shield')", "INSERT INTO E VALUES ('Gamma Beam', 'Beam')",
        "INSERT INTO E VALUES ('Delta Engine', 'Engine')"});
    QVERIFY2(m_db->ok(), qPrintable(m_db->error()));
    m_model = std::make_unique<ListModel>();
    m_db->load(*m_model, QStringLiteral("SELECT * FROM E"));
    m_view = std::make_unique<QTreeView>();
    m_view->setModel(m_model.get());
    m_prompt = std::make_unique<ScriptedPrompt>();
    m_status = RecordingStatus();
    m_find = new frmFind(m_view.get(), m_model.get(), &m_status);
    m_find->setAttribute(Qt::WA_DeleteOnClose);
    m_find->show();
}

void TestFrmFind::cleanup() {
    delete m_find.data();
    m_view.reset();
    m_model.reset();
    m_prompt.reset();
    m_db.reset();
}

void TestFrmFind::select(int row) {
    m_view->selectionModel()->setCurrentIndex(m_model->index(row, 0),
                                              QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

int TestFrmFind::selectedRow() const {
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.first().row() : -1;
}

void TestFrmFind::captionsAndStart() {
    QCOMPARE(m_find->windowTitle(), QStringLiteral("Find..."));
    QCOMPARE(m_find->lblFindWhat->text(), QStringLiteral("Find What:"));
    QCOMPARE(m_find->fraDirection->title(), QStringLiteral("Direction"));
    QCOMPARE(m_find->optDown->text(), QStringLiteral("Down"));
    QVERIFY(m_find->optDown->isChecked());
    QCOMPARE(m_find->chkMatchCase->text(), QStringLiteral("Match Case"));
    QCOMPARE(m_find->chkNamesOnly->text(), QStringLiteral("Search Names Only"));
    QCOMPARE(m_find->chkMarkAll->text(), QStringLiteral("Mark All"));
    QCOMPARE(m_find->cmdFindNext->text(), QStringLiteral("&Find Next"));
    QCOMPARE(m_find->cmdCancel->text(), QStringLiteral("&Cancel"));
    QVERIFY(!m_find->cmdFindNext->isEnabled());
    // It registers with the child-window manager under its caption.
    QCOMPARE(FindChildWindow(QStringLiteral("Find...")), m_find.data());
}

void TestFrmFind::buttonFollowsTheText() {
    QTest::keyClicks(m_find->txtSearchText, QStringLiteral("ab"));
    QVERIFY(m_find->cmdFindNext->isEnabled());
    m_find->txtSearchText->clear();
    QVERIFY(!m_find->cmdFindNext->isEnabled());
    m_find->txtSearchText->setText(QStringLiteral("x"));
    QVERIFY(m_find->cmdFindNext->isEnabled());
}

void TestFrmFind::markAllSwitchesCaptionAndDirection() {
    m_find->chkMarkAll->click();
    QCOMPARE(m_find->cmdFindNext->text(), QStringLiteral("Find All"));
    QVERIFY(!m_find->fraDirection->isEnabled());
    m_find->chkMarkAll->click();
    QCOMPARE(m_find->cmdFindNext->text(), QStringLiteral("Find Next"));
    QVERIFY(m_find->fraDirection->isEnabled());
}

void TestFrmFind::findNextSelectsAndStaysOpen() {
    select(0);
    m_find->txtSearchText->setText(QStringLiteral("beam"));
    m_find->cmdFindNext->click();
    QCOMPARE(selectedRow(), 2); // from below the selected row
    QVERIFY(m_find->isVisible());
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_status.status, (QStringList{"Finding...", "Ready"}));
    QCOMPARE(m_status.loadTime.size(), 1);
    QVERIFY(m_status.loadTime[0].endsWith(QStringLiteral(" Seconds")));
    bool isNumber = false;
    m_status.loadTime[0].chopped(8).toDouble(&isNumber);
    QVERIFY(isNumber);
}

void TestFrmFind::notFoundShowsTheBox() {
    select(3); // the last row: downwards there is nothing more, and no wrap-around
    m_find->txtSearchText->setText(QStringLiteral("Alpha"));
    m_find->cmdFindNext->click();
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().text, QStringLiteral("The search critiria was not found"));
    QCOMPARE(m_prompt->last().title, QStringLiteral("Not Found"));
    QCOMPARE(m_prompt->last().style, int(vb::Information));
    QCOMPARE(selectedRow(), 3);
    QCOMPARE(m_status.status.last(), QStringLiteral("Ready"));
    QVERIFY(m_find->isVisible());

    // Names only: a text that is only in another column is not found.
    select(0);
    m_find->chkNamesOnly->setChecked(true);
    m_find->txtSearchText->setText(QStringLiteral("Engine"));
    m_find->cmdFindNext->click();
    QCOMPARE(selectedRow(), 3); // "Delta Engine" holds it in its name
    m_find->txtSearchText->setText(QStringLiteral("Shield "));
    select(0);
    m_find->cmdFindNext->click();
    QCOMPARE(m_prompt->count(), 2);
}

void TestFrmFind::upwardsFromTheSelection() {
    select(3);
    m_find->optUp->setChecked(true);
    m_find->txtSearchText->setText(QStringLiteral("Beam"));
    m_find->cmdFindNext->click();
    QCOMPARE(selectedRow(), 2);
    m_find->cmdFindNext->click();
    QCOMPARE(selectedRow(), 0);
    m_find->cmdFindNext->click(); // the first row is selected: nothing above it
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(selectedRow(), 0);
}

void TestFrmFind::findAllMarksSelectsLastAndCloses() {
    // Nothing selected: the search starts at the first row.
    m_view->selectionModel()->clearSelection();
    m_find->chkMarkAll->setChecked(true);
    m_find->txtSearchText->setText(QStringLiteral("*a B?am"));
    m_find->cmdFindNext->click();
    QVERIFY(m_model->isRowBold(0) && m_model->isRowBold(2));
    QVERIFY(!m_model->isRowBold(1) && !m_model->isRowBold(3));
    QCOMPARE(selectedRow(), 2);
    QTRY_VERIFY(!m_find); // dismissed after a Find All
}

void TestFrmFind::cancelCloses() {
    m_find->cmdCancel->click();
    QTRY_VERIFY(!m_find);
    QCOMPARE(FindChildWindow(QStringLiteral("Find...")), nullptr);
}

QTEST_MAIN(TestFrmFind)
#include "tst_frmfind.moc"
