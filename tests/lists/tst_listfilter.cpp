// The search box's name filter over the main list: which rows it shows, and that the rows it hides
// come back where they belong, with their ticks, marks and selection.
#include "listfixture.h"
#include "lists/namematch.h"

#include <QItemSelectionModel>
#include <QTest>
#include <QTreeView>

namespace {
// One table of names (SQL literals), with a number column to sort by (the names' position reversed).
QStringList nameTable(const QStringList& names) {
    QStringList s{QStringLiteral("CREATE TABLE N (NAME VARCHAR(50), POS INTEGER, \"CHECK\" BOOLEAN)")};
    for (int i = 0; i < names.size(); ++i)
        s << QStringLiteral("INSERT INTO N VALUES (%1, %2, 0)").arg(names[i]).arg(names.size() - i);
    return s;
}

const QStringList kNames = {"'Ion Drive'",  "'Fusion Core'",     "'Scanner'",   "'Übergröße Ω'",
                            "'uber alles'", "'Hunter''s Lance'", "'Star*Gate'", "'KELVIN ' || char(8490)",
                            "'ſtrange'",    "'Café Noir'",       "'cafe'"};
} // namespace

class TestListFilter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showsTheNamesThatContainTheText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("empty: every row") << "" << QStringList();
        QTest::newRow("any case, anywhere") << "ION" << QStringList{"Ion Drive", "Fusion Core"};
        QTest::newRow("non-ASCII upper to lower") << "ÜBER" << QStringList{"Übergröße Ω"};
        QTest::newRow("Greek capital folded") << "ω" << QStringList{"Übergröße Ω"};
        QTest::newRow("accented matches only itself") << "CAFÉ" << QStringList{"Café Noir"};
        QTest::newRow("Kelvin sign folds to k") << "vin k" << QStringList{QStringLiteral("KELVIN \u212A")};
        QTest::newRow("long s folds to s") << "STRANGE" << QStringList{QStringLiteral("\u017Ftrange")};
        QTest::newRow("apostrophe") << "r's l" << QStringList{"Hunter's Lance"};
        QTest::newRow("wildcards are plain characters") << "r*g" << QStringList{"Star*Gate"};
        QTest::newRow("blank inside") << "n d" << QStringList{"Ion Drive"};
    }
    void showsTheNamesThatContainTheText() {
        QFETCH(QString, text);
        QFETCH(QStringList, shown);
        LOAD_LIST(m, QStringLiteral("SELECT NAME FROM N"), nameTable(kNames));
        const QStringList every = names(m);
        m.setNameFilter(text);
        QCOMPARE(names(m), text.isEmpty() ? every : shown);
        QCOMPARE(m.loadedRowCount(), kNames.size());
        // The same matcher decides for texts given as QStrings (cells that are not stored as text).
        for (const QString& n : every)
            QCOMPARE(NameMatcher(text).matches(n), text.isEmpty() || shown.contains(n));
    }

    // The stored (UTF-8) names are matched without a QString; every pair of these texts, as needle and
    // as name, must come out as folding both QStrings would have it.
    void utf8MatchingAgreesWithFoldedStrings() {
        const QStringList texts = {"Ion",
                                   "ion d",
                                   "Café Noir",
                                   "NOIR",
                                   "CAFÉ",
                                   "é",
                                   "Ω",
                                   "ω",
                                   "σ",
                                   "ς",
                                   "ΣΊΣΥΦΟΣ",
                                   "KELVIN \u212A",
                                   "k",
                                   "vin k",
                                   "\u017Ftrange",
                                   "STRANGE",
                                   "\U00010400x",
                                   "\U00010428",
                                   "ß",
                                   "SS",
                                   "Звезда",
                                   "зВ",
                                   "星舰 Reactor",
                                   "舰 r",
                                   ""};
        for (const QString& needle : texts) {
            const NameMatcher matcher(needle);
            for (const QString& name : texts) {
                const QByteArray utf8 = name.toUtf8();
                const bool want = name.toCaseFolded().contains(needle.toCaseFolded());
                QVERIFY2(matcher.matchesUtf8(std::string_view(utf8.constData(), size_t(utf8.size()))) == want,
                         qPrintable(needle + " in " + name));
            }
        }
    }

    void sortingWhileFilteredSortsEveryRow() {
        LOAD_LIST(m, QStringLiteral("SELECT NAME, POS FROM N"), nameTable(kNames));
        m.setNameFilter(QStringLiteral("e"));
        m.setSort(1, ListModel::Ascending);
        QCOMPARE(column(m, 1), (QStringList{"1", "3", "4", "5", "6", "7", "8", "9", "10", "11"})); // no Café
        m.setNameFilter(QString());
        QStringList positions;
        for (int i = 1; i <= kNames.size(); ++i)
            positions << QString::number(i);
        QCOMPARE(column(m, 1), positions); // the hidden rows were sorted too
    }

    void aReloadKeepsTheFilter() {
        LOAD_LIST(m, QStringLiteral("SELECT NAME FROM N"), nameTable(kNames));
        m.setNameFilter(QStringLiteral("ion"));
        m_db.load(m, QStringLiteral("SELECT NAME, POS FROM N"));
        QCOMPARE(names(m), (QStringList{"Ion Drive", "Fusion Core"}));
        QCOMPARE(m.nameFilter(), QStringLiteral("ion"));
        m.clear();
        QCOMPARE(m.nameFilter(), QStringLiteral("ion"));
    }

    void rowsAddressTheRecordsShown() {
        LOAD_LIST(m, QStringLiteral("SELECT NAME, \"CHECK\" FROM N"), nameTable(kNames));
        m.setRowBold(2); // Scanner
        m.setNameFilter(QStringLiteral("a"));
        QCOMPARE(m.name(0), QStringLiteral("Scanner"));
        QVERIFY(m.isRowBold(0));
        m.setChecked(1, true); // uber alles
        QCOMPARE(m.sourceRow(1), 4);
        QCOMPARE(m.viewRow(0), -1);          // Ion Drive is hidden
        QCOMPARE(m.viewRow(5), 2);           // Hunter's Lance
        QVERIFY(!m.isChecked(m.rowCount())); // past the rows shown
        QCOMPARE(m.text(m.rowCount(), 0), QString());
        m.setNameFilter(QString());
        QVERIFY(m.isChecked(4) && m.isRowBold(2) && !m.isChecked(1));
    }

    void theSelectedRecordStaysSelectedWhileShown() {
        LOAD_LIST(m, QStringLiteral("SELECT NAME FROM N"), nameTable(kNames));
        QTreeView view;
        view.setModel(&m);
        view.setCurrentIndex(m.index(1, 0));  // Fusion Core
        m.setNameFilter(QStringLiteral("o")); // Ion Drive, Fusion Core, Café Noir
        QCOMPARE(m.rowCount(), 3);
        QCOMPARE(m.name(view.currentIndex().row()), QStringLiteral("Fusion Core"));
        QVERIFY(view.selectionModel()->isRowSelected(view.currentIndex().row(), QModelIndex()));
        m.setNameFilter(QStringLiteral("scan"));
        QVERIFY(!view.currentIndex().isValid());
        QCOMPARE(view.model()->rowCount(), 1);
    }

    void numbersAsNamesAreMatchedAsShown() {
        LOAD_LIST(m, QStringLiteral("SELECT VAL, NAME FROM T"),
                  valueTable("VAL INTEGER", {"1234567", "42", "NULL"}));
        m.setNameFilter(QStringLiteral("4,5"));
        QCOMPARE(names(m), QStringList{"1,234,567"});
    }
};

QTEST_MAIN(TestListFilter)
#include "tst_listfilter.moc"
