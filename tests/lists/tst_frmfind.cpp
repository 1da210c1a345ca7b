#include "listfixture.h"
#include "lists/finditem.h"
#include "lists/frmfind.h"
#include "lists/wildcard.h"

#include "core/childwindows.h"
#include "core/scriptedprompt.h"

#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>

namespace {
// Rows (view rows from 0): 0 Alpha Beam | Beam | 100, 1 Beta Shield | Shield | 250, 2 Gamma Beam | Beam | 7,
// 3 Delta Engine | Engine | 1,500, 4 beta reactor | Reactor | 25. The setup records the status panels.
struct FindSetup : FindStatus {
    ListDb db{
        {"CREATE TABLE E (EQUIPMENT_NAME VARCHAR(50), TYPE VARCHAR(20), PRICE INTEGER)",
         "INSERT INTO E VALUES ('Alpha Beam', 'Beam', 100), ('Beta Shield', 'Shield', 250), "
         "('Gamma Beam', 'Beam', 7), ('Delta Engine', 'Engine', 1500), ('beta reactor', 'Reactor', 25)"}};
    QStringList status, loadTime;
    void setStatus(const QString& t) override { status << t; }
    void setLoadTime(const QString& t) override { loadTime << t; }
    ListModel m;
    QTreeView view;
    ScriptedPrompt prompt;
    QPointer<frmFind> find;
    ~FindSetup() override { delete find.data(); }
    int selectedRow() const {
        const QModelIndexList rows = view.selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.first().row() : -1;
    }
};
} // namespace

// The find dialog, its routine UberFindItem and the wildcard matching it searches with.
class TestFrmFind : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        s = std::make_unique<FindSetup>();
        QVERIFY2(s->db.ok(), qPrintable(s->db.error()));
        s->db.load(s->m, QStringLiteral("SELECT * FROM E"));
        s->view.setModel(&s->m);
        s->find = new frmFind(&s->view, &s->m, s.get());
        s->find->setAttribute(Qt::WA_DeleteOnClose);
        s->find->show();
    }

    void cleanup() { s.reset(); }

    void like_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("match");
        auto row = [](const char* tag, const char* text, const char* pattern, bool match) {
            QTest::newRow(tag) << QString(text) << QString(pattern) << match;
        };
        row("star needs the rest", "Heavy Beam", "*Beam*x", false);
        row("hash digit", "Mk2", "Mk#", true);
        row("negated", "d", "[!abc]", true);
        row("literal star in list", "a*b", "a[*]b", true);
        row("open bracket in list", "[", "[[]", true);
        row("dash first is literal", "-", "[-a]", true);
        row("backtracking", "abcabd", "*abd", true);
        // Lists that are not well formed.
        row("unclosed bracket is literal", "x[ab", "*[ab*", true);
        row("empty list takes no character", "ab", "a[]b", true);
        row("backwards range finds nothing", "m", "[z-a]", false);
        row("bang alone is a bang", "!", "[!]", true);
        row("ranges keep case", "q", "[!A-Z]", true);
        row("case beyond ascii", "ÜBER", "*über*", false);
    }

    void like() {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QFETCH(bool, match);
        QCOMPARE(LikeMatch(text, pattern), match);
        // Without case: the same as upper-casing both first.
        QCOMPARE(LikeMatch(text, pattern, true), LikeMatch(text.toUpper(), pattern.toUpper()));
    }

    void markAllMarksRowsAndCells() {
        ListModel& m = s->m;
        QSignalSpy changed(&m, &ListModel::dataChanged);
        QCOMPARE(UberFindItem(QStringLiteral("e"), 1, m, true, false, false, true), 5);
        QCOMPARE(changed.size(), 1); // one notification for the whole marking
        for (int r = 0; r < 5; ++r)
            QVERIFY(m.isRowBold(r)); // every name holds an "e"
        m.clearBold();
        QCOMPARE(UberFindItem(QStringLiteral("Beam"), 1, m, true, false, false, true), 3);
        // A row matched by name does not test its other cells.
        QVERIFY(m.isRowBold(0) && m.isRowBold(2) && !m.isRowBold(1) && !m.isCellBold(0, 1));
        m.clearBold();
        QCOMPARE(UberFindItem(QStringLiteral("5"), 1, m, true, false, false, true), 5);
        QVERIFY(m.isCellBold(1, 2) && m.isCellBold(3, 2) && m.isCellBold(4, 2));
        QVERIFY(!m.isCellBold(0, 2) && !m.isCellBold(2, 2) && !m.isRowBold(1) && !m.isCellBold(1, 1));
        // Names only marks no other cell; marks of an earlier search stay.
        QCOMPARE(UberFindItem(QStringLiteral("Shield"), 1, m, true, true, false, true), 2);
        QCOMPARE(UberFindItem(QStringLiteral("250"), 1, m, true, true, false, true), 0);
        QVERIFY(m.isRowBold(1) && m.isCellBold(1, 2) && m.isCellBold(3, 2));
    }

    void followsTheSortedOrderAndStaysInside() {
        ListModel& m = s->m;
        m.setSort(2, ListModel::Ascending); // by price: Gamma 7, beta reactor 25, Alpha 100, ...
        QCOMPARE(UberFindItem(QStringLiteral("Alpha"), 1, m, true, false, false, false), 3);
        QCOMPARE(UberFindItem(QStringLiteral("Gamma"), 2, m, true, false, false, false), 0);
        // Starts outside the list find nothing; an empty text ("**") matches any row.
        QCOMPARE(UberFindItem(QStringLiteral("Beam"), 9, m, false, false, false, false), 0);
        QCOMPARE(UberFindItem(QStringLiteral("Beam"), 0, m, true, false, false, false), 0);
        QCOMPARE(UberFindItem(QString(), 1, m, true, false, false, false), 1);
        ListModel empty;
        QCOMPARE(UberFindItem(QString(), 1, empty, true, false, false, true), 0);
    }

    void controls() {
        frmFind& f = *s->find;
        const QList<QPair<QString, QString>> captions = {
            {f.windowTitle(), "Find..."},           {f.lblFindWhat->text(), "Find What:"},
            {f.fraDirection->title(), "Direction"}, {f.optDown->text(), "Down"},
            {f.chkMatchCase->text(), "Match Case"}, {f.chkNamesOnly->text(), "Search Names Only"},
            {f.chkMarkAll->text(), "Mark All"},     {f.cmdFindNext->text(), "&Find Next"},
            {f.cmdCancel->text(), "&Cancel"}};
        for (const auto& [shown, caption] : captions)
            QCOMPARE(shown, caption);
        QVERIFY(f.optDown->isChecked());
        QCOMPARE(FindChildWindow(QStringLiteral("Find...")), &f); // registered under its caption
        // The button follows the text; Mark All switches its caption and the direction.
        QVERIFY(!f.cmdFindNext->isEnabled());
        QTest::keyClicks(f.txtSearchText, QStringLiteral("ab"));
        QVERIFY(f.cmdFindNext->isEnabled());
        f.txtSearchText->clear();
        QVERIFY(!f.cmdFindNext->isEnabled());
        f.chkMarkAll->click();
        QCOMPARE(f.cmdFindNext->text(), QStringLiteral("Find All"));
        QVERIFY(!f.fraDirection->isEnabled());
        f.chkMarkAll->click();
        QCOMPARE(f.cmdFindNext->text(), QStringLiteral("Find Next"));
        QVERIFY(f.fraDirection->isEnabled());
    }

    void search_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("selected");    // view row selected before, -1 for none
        QTest::addColumn<QString>("options"); // "up", "case" (Match Case), "names" (Search Names Only)
        QTest::addColumn<int>("found");       // view row selected after, -1 for the not-found box
        QTest::newRow("nothing selected: from the top") << "Beam" << -1 << "" << 0;
        QTest::newRow("down from below the selection") << "beam" << 0 << "" << 2;
        QTest::newRow("down from the last row: no wrap") << "Alpha" << 4 << "" << -1;
        QTest::newRow("up from above the selection") << "Beam" << 2 << "up" << 0;
        QTest::newRow("up with the first row selected") << "Alpha" << 0 << "up" << -1;
        QTest::newRow("without case") << "BETA" << -1 << "" << 1;
        QTest::newRow("with case") << "beta" << -1 << "case" << 4;
        QTest::newRow("number as shown") << "1,5" << -1 << "" << 3;
        QTest::newRow("names only finds names") << "Shield" << -1 << "names" << 1;
        QTest::newRow("names only skips other columns") << "Reactor" << -1 << "names case" << -1;
    }

    void search() {
        QFETCH(QString, text);
        QFETCH(int, selected);
        QFETCH(QString, options);
        QFETCH(int, found);
        frmFind& f = *s->find;
        if (selected >= 0)
            s->view.selectionModel()->select(s->m.index(selected, 0),
                                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        f.optUp->setChecked(options.contains(QLatin1String("up")));
        f.chkMatchCase->setChecked(options.contains(QLatin1String("case")));
        f.chkNamesOnly->setChecked(options.contains(QLatin1String("names")));
        f.txtSearchText->setText(text);
        f.cmdFindNext->click();
        QCOMPARE(s->prompt.count(), found < 0 ? 1 : 0);
        if (found < 0) {
            QCOMPARE(s->prompt.last().text, QStringLiteral("The search critiria was not found"));
            QCOMPARE(s->prompt.last().title, QStringLiteral("Not Found"));
            QCOMPARE(s->prompt.last().style, int(vb::Information));
        }
        QCOMPARE(s->selectedRow(), found < 0 ? selected : found);
        QVERIFY(f.isVisible()); // Find Next stays open and marks nothing
        for (int r = 0; r < s->m.rowCount(); ++r)
            QVERIFY(!s->m.isBold(r, 0) && !s->m.isBold(r, 1) && !s->m.isBold(r, 2));
        QCOMPARE(s->status, (QStringList{"Finding...", "Ready"}));
        const QString loadTime = s->loadTime.join(QLatin1Char('|')); // set once
        const QRegularExpression seconds(QStringLiteral("^\\d+(\\.\\d\\d?)? Seconds$"));
        QVERIFY2(seconds.match(loadTime).hasMatch(), qPrintable(loadTime));
    }

    // Find All marks, selects the last row found and closes; Cancel closes too.
    void findAllMarksAndCloses() {
        s->find->chkMarkAll->setChecked(true);
        s->find->txtSearchText->setText(QStringLiteral("*a B?am"));
        s->find->cmdFindNext->click();
        QVERIFY(s->m.isRowBold(0) && s->m.isRowBold(2) && !s->m.isRowBold(1) && !s->m.isRowBold(3));
        QCOMPARE(s->selectedRow(), 2);
        QTRY_VERIFY(!s->find); // dismissed after a Find All
    }

    void cancelCloses() {
        s->find->cmdCancel->click();
        QTRY_VERIFY(!s->find);
        QCOMPARE(FindChildWindow(QStringLiteral("Find...")), nullptr);
    }

private:
    std::unique_ptr<FindSetup> s;
};

QTEST_MAIN(TestFrmFind)
#include "tst_frmfind.moc"
