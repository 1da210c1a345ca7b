// The component editor on the sample world: its statements as written (the manufacturing fee only in
// the UPDATE), each grid's rows written where its load finds them again, the type and subtype lists,
// the refusals before anything is written, and all-or-nothing saves.
#include "editorfixture.h"
#include "editors/frmaddcomponent.h"
#include "editors/frmlisteditdialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>

namespace {
const QString Sextant = "Basic Navigator's Sextant"; // no type, no subtype in the sample world
const QString Lens = "Basic Focusing Lens";

frmAddComponent* editor(const QString& name) {
    return openEditor<frmAddComponent>("Components", name, "Add Component");
}

QStringList choices(const QComboBox* box) {
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out << box->itemText(i);
    return out;
}
} // namespace

class TestFrmAddComponent : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(&e), qPrintable(e));
    }
    void cleanup() { f.tearDown(); }

    void statementsAsWritten_data() {
        QTest::addColumn<QStringList>("values"); // level, price, cost, comments, type, subtype
        QTest::addColumn<QString>("insert");
        QTest::addColumn<QString>("update");
        QTest::newRow("every box filled")
            << QStringList{"12", "-2", "300", "It's old", "Optics", "Lens"}
            << "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE, COMMENTS, PERSONAL_DB, TYPE, SUBTYPE, PIC_ID, "
               "LAST_UPDATED) VALUES ('Navigator''s Sextant',12,-2,'It''s old',TRUE,'Optics','Lens','7',"
               "'2026-11-21 09:30:00')"
            << "UPDATE COMPONENTS SET LVL = 12, PRICE = -2, COMMENTS = 'It''s old',UPDATED = "
               "TRUE,COST_TO_MANUFACTURE = 300, TYPE = 'Optics', SUBTYPE = 'Lens', PIC_ID = '7', LAST_UPDATED = "
               "'2026-11-21 09:30:00'WHERE COMPONENT_NAME = 'Navigator''s Sextant'";
        // An empty number would leave "LVL = ," behind, and an empty type must stay NULL for the
        // "Unknown" filter of the main list.
        QTest::newRow("empty boxes")
            << QStringList{"", "", "", "", "", ""}
            << "INSERT INTO COMPONENTS (COMPONENT_NAME, LVL, PRICE, COMMENTS, PERSONAL_DB, TYPE, SUBTYPE, PIC_ID, "
               "LAST_UPDATED) VALUES ('Navigator''s Sextant',NULL,NULL,'',TRUE,NULL,NULL,'7','2026-11-21 "
               "09:30:00')"
            << "UPDATE COMPONENTS SET LVL = NULL, PRICE = NULL, COMMENTS = '',UPDATED = TRUE,COST_TO_MANUFACTURE = "
               "NULL, TYPE = NULL, SUBTYPE = NULL, PIC_ID = '7', LAST_UPDATED = '2026-11-21 09:30:00'WHERE "
               "COMPONENT_NAME = 'Navigator''s Sextant'";
    }
    void statementsAsWritten() {
        QFETCH(QStringList, values);
        QFETCH(QString, insert);
        QFETCH(QString, update);
        comp::Fields c;
        c.name = "Navigator's Sextant";
        c.level = values[0];
        c.price = values[1];
        c.cost = values[2];
        c.comments = values[3];
        c.type = values[4];
        c.subtype = values[5];
        c.picture = 7;
        QCOMPARE(comp::insertSql(c, Stamp), insert);
        QCOMPARE(comp::updateSql(c, Stamp), update);
        f.run({insert, update}); // both run as they are
    }

    // A new component is written without its fee; the fee is written when it is saved again.
    void theFeeIsWrittenOnlyOnceTheComponentExists() {
        auto* w = editor("");
        QVERIFY(w && w->isNew() && !w->txtManufPrice->isEnabled());
        w->txtName->setText("Gunner's Sight");
        w->txtPrice->setText("80");
        w->txtManufPrice->setText("30"); // were the box open, the INSERT would still leave it out
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        const QString sql =
            "SELECT COST_TO_MANUFACTURE, PERSONAL_DB, PRICE FROM COMPONENTS WHERE COMPONENT_NAME = 'Gunner''s Sight'";
        QCOMPARE(rows(sql), QStringList{"NULL|true|80"});
        QApplication::processEvents();
        w = editor("Gunner's Sight");
        QVERIFY(w && w->txtManufPrice->isEnabled() && w->txtManufPrice->text().isEmpty());
        w->txtManufPrice->setText("45");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows(sql), QStringList{"45|true|80"});
        QCOMPARE(f.saved, QStringList({"Components: Gunner's Sight", "Components: Gunner's Sight"}));
        QCOMPARE(f.prompt().count(), 0);
    }

    void eachGridWritesRowsItsLoadFindsAgain_data() {
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QString>(
            "stored"); // table, its column of the component, of the row's name, of the value
        const auto row = [](const char* tag, const QString& grid, const QString& cells,
                            const QString& stored) {
            QTest::newRow(tag) << grid << cells.split('|') << stored;
        };
        row("upgraded into", "ubgManuComps", "Deluxe Sextant|3",
            "COMPONENTS_UPGRADE_FROM UPGRADE_FROM COMPONENT_NAME AMOUNT");
        row("built with equipment", "ubgBlueEquip", "Hunter's Lance Mk II|1",
            "COMPONENTS_EQUIPMENTS COMPONENT_NAME EQUIPMENT_NAME AMOUNT");
        row("upgraded from", "ubgBlueComps", "Basic Gyro Core|4",
            "COMPONENTS_UPGRADE_FROM COMPONENT_NAME UPGRADE_FROM AMOUNT");
        row("built with raw materials", "ubgBlueRawMats", "Miner's Gold|5",
            "COMPONENTS_RAW_MATERIALS COMPONENTS_COMPONENT RAW_MATERIAL AMOUNT");
    }
    void eachGridWritesRowsItsLoadFindsAgain() {
        QFETCH(QString, grid);
        QFETCH(QStringList, cells);
        QFETCH(QString, stored);
        const QStringList t = stored.split(' ');
        auto* w = editor(Sextant);
        QVERIFY(w);
        QHash<QString, QString> before; // every grid's rows as loaded
        for (const GridDef& d : comp::grids())
            before.insert(d.widget, GridFingerprint(w->grid(d.widget)->grid()));
        addRow(w->grid(grid), cells);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT " + t[3] + " FROM " + t[0] + " WHERE " + t[1] + " = " + lit(Sextant) + " AND " +
                      t[2] + " = " + lit(cells[0])),
                 QStringList{cells[1]});
        QApplication::processEvents();
        // Opened again, the row is back in its grid and every other grid is as it was (the two grids
        // over COMPONENTS_UPGRADE_FROM look at its two ends).
        w = editor(Sextant);
        QVERIFY(w);
        for (const GridDef& d : comp::grids()) {
            const QString now = GridFingerprint(w->grid(d.widget)->grid());
            if (d.widget == grid)
                QVERIFY2(now.contains(cells.join('|') + "|~"), qPrintable(now));
            else
                QCOMPARE(now, before.value(d.widget));
        }
        QCOMPARE(f.prompt().count(), 0);
    }

    void subtypesFollowTheType() {
        f.run(
            {"UPDATE COMPONENTS SET TYPE = 'Optics', SUBTYPE = 'Lens' WHERE COMPONENT_NAME = " + lit(Lens)});
        auto* w = editor(Lens);
        QVERIFY(w);
        QCOMPARE(choices(w->cmbType), QStringList({"", "Actuator", "Casing", "Circuitry", "Hull Plating",
                                                   "Optics", "Power Cell", "Unknown"}));
        QCOMPARE(choices(w->cmbSubType), QStringList({"", "Emitter Crystal", "Lens"}));
        w->cmbType->setCurrentText("Circuitry");
        QCOMPARE(choices(w->cmbSubType), QStringList({"", "Logic Board", "Relay"}));
        QCOMPARE(w->cmbSubType->currentText(), QString()); // Circuitry has no "Lens"
        w->cmbSubType->setCurrentText("Relay");
        w->cmbType->setCurrentText("Casing"); // a type without subtypes
        QVERIFY(!w->cmbSubType->isEnabled() && w->cmdEditSubTypes->isEnabled());
        w->cmbType->setCurrentIndex(0);
        QVERIFY(!w->cmdEditSubTypes->isEnabled());
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        // No type is NULL, so that the main list's "Unknown" filter still finds the component.
        QCOMPARE(rows("SELECT TYPE, SUBTYPE FROM COMPONENTS WHERE COMPONENT_NAME = " + lit(Lens)),
                 QStringList{"NULL|NULL"});
    }

    // A type or subtype the lookup tables lack is shown as the record has it, and kept by a save.
    void aRecordsOwnSpellingIsKept() {
        f.run({"UPDATE COMPONENTS SET TYPE = 'optics', SUBTYPE = 'Hexagonal' WHERE COMPONENT_NAME = " +
               lit(Lens)});
        auto* w = editor(Lens);
        QVERIFY(w);
        QCOMPARE(w->cmbType->currentText() + "/" + w->cmbSubType->currentText(), QString("optics/Hexagonal"));
        w->txtPrice->setText("99");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT TYPE, SUBTYPE FROM COMPONENTS WHERE COMPONENT_NAME = " + lit(Lens)),
                 QStringList{"optics|Hexagonal"});
    }

    void typeAndSubtypeListsCanBeEdited() {
        auto* w = editor(Sextant);
        QVERIFY(w);
        const auto add = [this](const QString& title, const QString& value) {
            whenShown<frmListEditDialog>([this, title, value](frmListEditDialog* d) {
                QCOMPARE(d->windowTitle(), title);
                f.prompt().queueText(value);
                d->cmdAddItem_Click();
            });
        };
        add("Modify Component Types", "Scanner's Array");
        w->cmdEditTypes->click();
        QVERIFY(choices(w->cmbType).contains("Scanner's Array"));
        QCOMPARE(w->cmbType->currentText(), QString()); // the record's own choice is untouched
        w->cmbType->setCurrentText("Scanner's Array");
        add("Modify Component Subtypes", "Wide Band");
        w->cmdEditSubTypes->click();
        QCOMPARE(choices(w->cmbSubType), QStringList({"", "Wide Band"}));
        QVERIFY(w->cmbSubType->isEnabled());
        w->cmbSubType->setCurrentText("Wide Band");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(rows("SELECT TYPE, SUBTYPE FROM COMPONENTS WHERE COMPONENT_NAME = " + lit(Sextant)),
                 QStringList{"Scanner's Array|Wide Band"});
    }

    void tabVisitsTheFieldsInOrder() {
        f.run({"UPDATE COMPONENTS SET TYPE = 'Optics' WHERE COMPONENT_NAME = " + lit(Lens)});
        auto* w = editor(Lens);
        QVERIFY(w);
        w->activateWindow();
        w->txtName->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(w));
        QStringList visited;
        for (int i = 0; i < 8; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            visited << QApplication::focusWidget()->objectName();
        }
        QCOMPARE(visited, QStringList({"cmbLevel", "cmbType", "cmdEditTypes", "cmbSubType", "cmdEditSubTypes",
                                       "txtPrice", "txtManufPrice", "cmdPicture"}));
    }

private:
    EditorFixture f;
};

QTEST_MAIN(TestFrmAddComponent)
#include "tst_frmaddcomponent.moc"
