// Delete, copy and rename of the five kinds: every link row at every place a name can be held, the
// statistics row per equipment type, the refusals, and all-or-nothing when a statement fails half-way.
#include "editors/editorsdb.h"
#include "editors/recordops.h"
#include "editors/recordworld.h"
#include "views/equiptypes.h"

#include <QTest>
#include <sqlite3.h>

namespace {

const QStringList Kinds = {"Equipment", "Components", "Raw Materials", "Items", "MOBs"};

void raw(const QString& sql) {
    char* err = nullptr;
    const int rc = sqlite3_exec(db().handle(), sql.toUtf8().constData(), nullptr, nullptr, &err);
    const QString message = QString::fromUtf8(err ? err : "");
    sqlite3_free(err);
    QVERIFY2(rc == SQLITE_OK, qPrintable(message));
}

// The fields of the statement's first row as name=value texts, without the name and the flags a copy
// sets.
QStringList fields(const QString& sql, const QString& nameColumn) {
    Recordset rs;
    rs.open(sql);
    QStringList out;
    for (int i = 0; !rs.eof() && i < rs.fieldCount(); ++i) {
        const QString f = rs.fieldName(i);
        if (f != nameColumn && f != "PERSONAL_DB" && f != "UPDATED" && f != "LAST_UPDATED")
            out << f + "=" + rs.value(i).toString();
    }
    return out;
}

QStringList recordFields(const QString& kind, const QString& name) {
    const world::Place main = world::recordTables(kind).first();
    return fields("SELECT * FROM " + main.table + " WHERE " + main.column + " = " + world::lit(name),
                  main.column);
}

// What the equipment view shows of the record, its statistics included (computed columns too).
QStringList shownEquipment(const QString& name, int type) {
    return fields(GetSQL(type, true, false, true, true, QString(), false) +
                      " AND EQUIPMENTS.EQUIPMENT_NAME = " + world::lit(name),
                  "EQUIPMENT_NAME");
}

} // namespace

class TestRecordOps : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(m_db.setUp(&error), qPrintable(error));
    }
    void cleanup() { m_db.tearDown(); }

    void deleteCopyRename_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("op");
        for (const QString& kind : Kinds)
            for (const char* op : {"delete", "copy", "rename"})
                QTest::addRow("%s %s", op, qPrintable(kind)) << kind << QString(op);
    }
    // Names with a single quote go through every statement; a bystander of the same kind with the same
    // kind of links shows that nothing else is touched.
    void deleteCopyRename() {
        QFETCH(QString, kind);
        QFETCH(QString, op);
        const QString old = "Zed's " + kind, other = "Other's " + kind, renamed = "Nova's " + kind;
        world::addRecord(kind, old, 2);
        world::addRecord(kind, other, 2);
        // Copying an equipment that another one upgrades from is refused (tested below): not here.
        if (kind == "Equipment" && op == "copy")
            db().execute("DELETE FROM EQUIPMENTS_UPGRADE_FROM WHERE UPGRADE_FROM = " + world::lit(old));
        const QList<long> oldLinks = world::linkCounts(kind, old);
        const QStringList fields = recordFields(kind, old);
        const QString stats = kind == "Equipment" ? QString("WEAPON_STATS") : QString();
        const int tables = int(world::recordTables(kind, stats).size());

        bool done = false;
        if (op == "delete")
            done = DeleteRecord(kind, old);
        else if (op == "copy")
            done = CopyRecord(kind, old, renamed);
        else
            done = RenameRecord(kind, old, renamed);
        QVERIFY(done);

        QCOMPARE(world::linkCounts(kind, other), QList<long>(oldLinks.size(), 2));
        QCOMPARE(world::recordRows(kind, other, stats), tables);
        QCOMPARE(world::recordRows(kind, old, stats), op == "copy" ? tables : 0);
        QCOMPARE(world::linkCounts(kind, old), op == "copy" ? oldLinks : QList<long>(oldLinks.size(), 0));
        if (op == "delete") {
            QCOMPARE(m_db.prompt().count(), 0);
            return;
        }
        // The copy joins every chain the old record was in, at both ends of the self-referencing tables.
        QCOMPARE(world::linkCounts(kind, renamed), oldLinks);
        QCOMPARE(world::recordRows(kind, renamed, stats), tables);
        QCOMPARE(recordFields(kind, renamed), fields);
        const world::Place main = world::recordTables(kind).first();
        QCOMPARE(world::count("SELECT COUNT(*) FROM " + main.table +
                              " WHERE PERSONAL_DB AND UPDATED AND "
                              "LAST_UPDATED = '2031-05-06 07:08:09' AND " +
                              main.column + " = " + world::lit(renamed)),
                 1L);
        // Only an equipment copy says it is done.
        const bool told = kind == "Equipment" && op == "copy";
        QCOMPARE(m_db.prompt().count(), told ? 1 : 0);
        if (told) {
            QCOMPARE(m_db.prompt().last().text, "'" + old + "' has been copied to '" + renamed + "'.");
            QCOMPARE(m_db.prompt().last().style, int(vb::Information));
        }
    }

    void equipmentStatistics_data() {
        QTest::addColumn<QString>("type");
        for (const char* t : {"Beam", "Reactor", "Engine", "Shield", "Device", "Ammunition"})
            QTest::newRow(t) << QString(t);
    }
    // Each type's statistics row goes with the record, and a copy shows the same figures. A device has
    // no statistics: a stray row in a statistics table under its name is not its own and stays.
    void equipmentStatistics() {
        QFETCH(QString, type);
        const QString name = "Zed's " + type;
        world::addRecord("Equipment", name, 1, type);
        db().execute("DELETE FROM EQUIPMENTS_UPGRADE_FROM");
        db().execute("INSERT INTO AMO_TYPES VALUES ('Rocket', 'Missile')"); // the ammunition's launch type
        if (type == "Device")
            db().execute("INSERT INTO WEAPON_STATS (EQUIPMENT_NAME, DAMAGE) VALUES (" + world::lit(name) +
                         ", 1)");
        const QString stats = type == "Device" ? QString("WEAPON_STATS") : world::statTableOf(type);
        const world::Place statPlace{stats, "EQUIPMENT_NAME"};
        const int index = Enumerate(type);
        const QStringList shown = shownEquipment(name, index);
        QVERIFY(!shown.isEmpty());

        QVERIFY(CopyRecord("Equipment", name, "Copy of " + type));
        QCOMPARE(shownEquipment("Copy of " + type, index), shown);
        QCOMPARE(world::rowsAt(statPlace, "Copy of " + type), type == "Device" ? 0L : 1L);

        QVERIFY(DeleteRecord("Equipment", name));
        QCOMPARE(world::recordRows("Equipment", name), 0);
        QCOMPARE(world::rowsAt(statPlace, name), type == "Device" ? 1L : 0L);
        QCOMPARE(world::rowsAt(statPlace, "Copy of " + type), type == "Device" ? 0L : 1L);
    }

    void copyOfAnUpgradeSourceIsRefused() {
        world::addRecord("Equipment", "Zed's Lance", 0);
        db().execute("INSERT INTO EQUIPMENTS_UPGRADE_FROM VALUES ('Great Lance', 'Zed''s Lance', 1)");
        const QString before = world::dump();
        QVERIFY(!CopyRecord("Equipment", "Zed's Lance", "Lance Two"));
        QCOMPARE(m_db.prompt().count(), 1);
        QCOMPARE(m_db.prompt().last().text,
                 QString("Cannot upgrade Zed's Lance because it is required to upgrade Great Lance"));
        QCOMPARE(m_db.prompt().last().title, QString("Cannot Copy"));
        QCOMPARE(m_db.prompt().last().style, int(vb::Critical));
        QCOMPARE(world::dump(), before);
        // Renaming it keeps the upgrade: the other equipment now upgrades from the new name.
        QVERIFY(RenameRecord("Equipment", "Zed's Lance", "Lance Two"));
        QCOMPARE(
            world::count("SELECT COUNT(*) FROM EQUIPMENTS_UPGRADE_FROM WHERE EQUIPMENT_NAME = 'Great Lance' "
                         "AND UPGRADE_FROM = 'Lance Two'"),
            1L);
    }

    void failureLeavesDatabaseAsItWas_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("trigger");   // when the statement fails: BEFORE <event> ON <table>
        QTest::addColumn<QString>("procedure"); // who reports it; empty: thrown to the menu handler
        const auto row = [](const char* tag, const QString& kind, const QString& op, const QString& trigger,
                            const QString& procedure) {
            QTest::newRow(tag) << kind << op << trigger << procedure;
        };
        row("delete component, 5th table", "Components", "delete", "DELETE ON COMPONENTS_ITEMS",
            "DeleteComponentRelationships");
        row("delete MOB, 7th table", "MOBs", "delete", "DELETE ON MOB_RESISTANCE", "DeleteItemRelationships");
        row("delete beam, its statistics", "Equipment", "delete", "DELETE ON WEAPON_STATS",
            "DeleteEquipment");
        row("delete item, the record", "Items", "delete", "DELETE ON ITEMS", "");
        row("copy raw material, 4th table", "Raw Materials", "copy", "INSERT ON MINE_LOCATIONS", "CopyRows");
        row("copy MOB, its statistics", "MOBs", "copy", "INSERT ON MOB_STATS", "CopyMOB");
        row("rename component, the old record", "Components", "rename", "DELETE ON COMPONENTS",
            "RenameComponent");
        row("rename raw material, both ends", "Raw Materials", "rename",
            "DELETE ON RAW_MATERIALS_REFINES_FROM", "DeleteRawMaterialRelationships");
        row("rename equipment, the old record", "Equipment", "rename", "DELETE ON EQUIPMENTS",
            "DeleteEquipment");
        row("rename item, the copy's links", "Items", "rename", "INSERT ON MOB_ITEM_DROP", "CopyRows");
    }
    // A statement that fails half-way leaves the database exactly as it was, and is still reported
    // under the name of the routine that met it.
    void failureLeavesDatabaseAsItWas() {
        QFETCH(QString, kind);
        QFETCH(QString, op);
        QFETCH(QString, trigger);
        QFETCH(QString, procedure);
        world::addRecord(kind, "Zed's Own", 3);
        raw("CREATE TRIGGER boom BEFORE " + trigger + " BEGIN SELECT RAISE(ABORT, 'boom'); END");
        const QString before = world::dump();
        bool done = false, thrown = false;
        try {
            done = op == "delete" ? DeleteRecord(kind, "Zed's Own")
                   : op == "copy" ? CopyRecord(kind, "Zed's Own", "Nova")
                                  : RenameRecord(kind, "Zed's Own", "Nova");
        } catch (const VbError&) {
            thrown = true;
        }
        QCOMPARE(thrown, procedure.isEmpty());
        QVERIFY(!done);
        QVERIFY(!db().inTransaction());
        QCOMPARE(world::dump(), before);
        if (!procedure.isEmpty()) {
            QCOMPARE(m_db.prompt().count(), 1);
            QVERIFY2(m_db.log().contains("in procedure " + procedure + " of Module modMain"),
                     qPrintable(m_db.log()));
        }
    }

    void renameThatOnlyChangesCase() {
        world::addRecord("Components", "zed's coil", 2);
        const QList<long> links = world::linkCounts("Components", "zed's coil");
        QVERIFY(RenameRecord("Components", "zed's coil", "Zed's Coil"));
        QCOMPARE(world::count("SELECT COUNT(*) FROM COMPONENTS WHERE COMPONENT_NAME = 'Zed''s Coil'"), 1L);
        Recordset rs;
        rs.open("SELECT COMPONENT_NAME FROM COMPONENTS");
        QCOMPARE(rs.value(0).toString(), QString("Zed's Coil"));
        QCOMPARE(world::linkCounts("Components", "Zed's Coil"), links);
        QCOMPARE(
            world::count("SELECT COUNT(*) FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME LIKE '~%' OR "
                         "UPGRADE_FROM LIKE '~%'"),
            0L);
    }

    void takenNameIsRefused_data() {
        QTest::addColumn<QString>("op");
        for (const char* op : {"copy", "rename"})
            QTest::newRow(op) << QString(op);
    }
    void takenNameIsRefused() {
        QFETCH(QString, op);
        world::addRecord("Items", "Zed's Gem", 2);
        world::addRecord("Items", "Ruby", 1);
        const QString before = world::dump();
        // Names are the same without regard to case.
        QVERIFY(!(op == "copy" ? CopyRecord("Items", "Zed's Gem", "RUBY")
                               : RenameRecord("Items", "Zed's Gem", "RUBY")));
        QCOMPARE(world::dump(), before);
        QCOMPARE(m_db.prompt().count(), 1);
        QCOMPARE(m_db.prompt().last().title, QString("Duplicate Record"));
    }

private:
    EditorsDb m_db;
};

QTEST_GUILESS_MAIN(TestRecordOps)
#include "tst_recordops.moc"
