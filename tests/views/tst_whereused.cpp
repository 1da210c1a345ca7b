// Where-used on the hand-worked recipe world: direct uses, uses through chains with the amount one of
// each takes in all, end products, records that are not in the database, and cycles.
#include "recipeworld.h"
#include "views/whereused.h"
#include "viewsfixture.h"

#include <QTest>

using namespace bom;

class TestWhereUsed : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(f.exec(RecipeWorld(), &error), qPrintable(error));
    }
    void cleanup() { f.tearDown(); }

    void usesWithAmountsThroughEveryChain_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("uses"); // "steps name kind: per one" with "!" for an end product
        QTest::newRow("iron, six branches")
            << int(Kind::RawMaterial) << "IRON"
            << QStringList{"1 Core Component: 14",       "1 Pulse Cannon Equipment: 45 !",
                           "1 Spark Drill Equipment: 7", "1 Steel Raw Material: 3",
                           "1 Tube Component: 4",        "2 Barrel Component: 13"};
        QTest::newRow("coal through steel")
            << int(Kind::RawMaterial) << "Coal"
            << QStringList{"1 Steel Raw Material: 1", "2 Barrel Component: 3", "2 Core Component: 2",
                           "3 Pulse Cannon Equipment: 8 !"};
        QTest::newRow("an item with a quote, amount missing")
            << int(Kind::Item) << "Smith's Manual" << QStringList{"1 Pulse Cannon Equipment: 1 !"};
        QTest::newRow("an equipment used in a component")
            << int(Kind::Equipment) << "Spark Drill"
            << QStringList{"1 Core Component: 1", "2 Pulse Cannon Equipment: 1 !"};
        QTest::newRow("an upgrade source")
            << int(Kind::Component) << "Tube"
            << QStringList{"1 Barrel Component: 1", "2 Pulse Cannon Equipment: 2 !"};
        QTest::newRow("nothing uses it") << int(Kind::Equipment) << "Pulse Cannon" << QStringList();
        QTest::newRow("same name, other kind") << int(Kind::Component) << "Iron" << QStringList();
    }
    void usesWithAmountsThroughEveryChain() {
        QFETCH(int, kind);
        QFETCH(QString, name);
        QFETCH(QStringList, uses);
        const WhereUsedResult r = WhereUsed({Kind(kind), name});
        QStringList got;
        for (const Use& u : r.uses) {
            QVERIFY(u.found);
            got << QStringLiteral("%1 %2 %3: %4%5")
                       .arg(u.steps)
                       .arg(u.ref.name, kindWord(u.ref.kind))
                       .arg(u.perUnit)
                       .arg(u.endProduct ? " !" : "");
        }
        QCOMPARE(got, uses);
        QVERIFY(r.cycles.isEmpty() && !r.overflow);
        QCOMPARE(r.directCount(), int(std::count_if(uses.begin(), uses.end(),
                                                    [](const QString& u) { return u.startsWith("1 "); })));
    }

    void recipesOfMissingRecordsAndCycles() {
        QString error;
        QVERIFY2(
            f.exec({"INSERT INTO EQUIPMENTS_RAW_MATERIALS (EQUIPMENTS_EQUIPMENT, RAW_MATERIAL_NAME, AMOUNT) "
                    "VALUES ('Lost Blueprint', 'Coal', 9)"},
                   &error),
            qPrintable(error));
        WhereUsedResult r = WhereUsed({Kind::RawMaterial, "Coal"});
        QCOMPARE(r.uses.at(0).ref.name, QStringLiteral("Lost Blueprint"));
        QVERIFY(!r.uses.at(0).found && r.uses.at(0).perUnit == 9 && r.uses.at(0).endProduct);

        QVERIFY2(f.addRecipeCycle(&error), qPrintable(error));
        r = WhereUsed({Kind::Component, "Cycle Coil A"});
        QStringList got;
        for (const Use& u : r.uses)
            got << QStringLiteral("%1 %2: %3").arg(u.steps).arg(u.ref.name).arg(u.perUnit);
        QCOMPARE(got, (QStringList{"1 Cycle Coil B: 1", "1 Cycle Engine: 1"}));
        QCOMPARE(r.cycles.size(), 1);
        QStringList cycle;
        for (const Ref& c : r.cycles.first())
            cycle << c.name;
        QCOMPARE(cycle, (QStringList{"Cycle Coil B", "Cycle Coil A"})); // B is made from A, A from B
    }

private:
    ViewsFixture f;
};

QTEST_GUILESS_MAIN(TestWhereUsed)
#include "tst_whereused.moc"
