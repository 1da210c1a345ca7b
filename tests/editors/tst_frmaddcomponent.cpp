// The component editor on the sample world: its statements as written (the manufacturing fee only in
// the UPDATE), each grid's rows written where its load finds them again, the type and subtype lists,
// the refusals before anything is written, all-or-nothing saves, and names with a single quote.
#include "core/childwindows.h"
#include "core/clock.h"
#include "data/database.h"
#include "data/recordset.h"
#include "editors/editors.h"
#include "editors/frmaddcomponent.h"
#include "editors/frmlisteditdialog.h"
#include "editors/gridroutines.h"
#include "editors/ubgrid.h"
#include "editortests.h"
#include "viewsfixture.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolButton>
#include <sqlite3.h>

namespace {
const QDateTime Stamp(QDate(2026, 11, 21), QTime(9, 30, 0));
const QString Sextant = "Basic Navigator's Sextant"; // no type, no subtype in the sample world
const QString Kells = "Kell's Anchorage";

frmAddComponent* editor(const QString& name) {
    OpenEditor("Components", name);
    return qobject_cast<frmAddComponent*>(
        FindChildWindow(name.isEmpty() ? QString("Add Component") : "Edit: " + name));
}

void addRow(UBGrid* g, const QStringList& cells) {
    const int row = g->grid().rows() - 1;
    for (int c = 0; c < cells.size(); ++c)
        g->grid().userEdit(row, c + 1, cells.at(c));
}

QStringList choices(const QComboBox* box) {
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out << box->itemText(i);
    return out;
}

QString quoted(const QString& s) {
    return QString(s).replace("'", "''");
}
} // namespace

class TestFrmAddComponent : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        QString e;
        QVERIFY2(f.setUp(true, &e), qPrintable(e));
        setClock([] { return Stamp; });
        m_saved.clear();
        setRecordSavedHandler(
            [this](const QString& kind, const QString& name) { m_saved << kind + ": " + name; });
    }
    void cleanup() {
        CloseChildWindows();
        QApplication::processEvents();
        setRecordSavedHandler(nullptr);
        setClock(nullptr);
        f.tearDown();
    }

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
        // Both run as they are.
        QVERIFY2(f.exec({comp::insertSql(c, Stamp), comp::updateSql(c, Stamp)}, &m_error),
                 qPrintable(m_error));
    }

    void loadShowsTheRecord() {
        const QString name =
            f.scalar(
                 "SELECT COMPONENT_NAME FROM COMPONENTS WHERE COST_TO_MANUFACTURE = -1 AND SUBTYPE IS NOT "
                 "NULL ORDER BY COMPONENT_NAME")
                .toString();
        QVERIFY(!name.isEmpty());
        auto* w = editor(name);
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.prompt().count(), 0);
        QVERIFY(!w->isNew() && w->txtName->isReadOnly());
        const QString where = " FROM COMPONENTS WHERE COMPONENT_NAME = '" + quoted(name) + "'";
        QCOMPARE(w->cmbType->currentText(), f.scalar("SELECT TYPE" + where).toString());
        QCOMPARE(w->cmbSubType->currentText(), f.scalar("SELECT SUBTYPE" + where).toString());
        QCOMPARE(choices(w->cmbSubType).mid(1),
                 column("SELECT COMPONENT_SUBTYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_TYPE = '" +
                        w->cmbType->currentText() + "' ORDER BY COMPONENT_SUBTYPE"));
        QCOMPARE(w->txtPrice->text(), f.scalar("SELECT PRICE" + where).toString());
        QVERIFY(w->txtManufPrice->isEnabled());
        QCOMPARE(w->txtManufPrice->text(), QString("-1"));
        QCOMPARE(w->lblManufWord->text(), QString("Not Manufacturable"));
        // Every grid holds the record's rows of its table.
        const struct {
            const char* grid;
            const char* count;
        } grids[] = {{"ubgManuEquip", "EQUIPMENTS_COMPONENTS WHERE COMPONENTS_COMPONENT"},
                     {"ubgManuComps", "COMPONENTS_UPGRADE_FROM WHERE UPGRADE_FROM"},
                     {"ubgMOBs", "MOB_COMP_DROP WHERE COMPONENT_NAME"},
                     {"ubgBlueEquip", "COMPONENTS_EQUIPMENTS WHERE COMPONENT_NAME"},
                     {"ubgBlueComps", "COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME"},
                     {"ubgBlueRawMats", "COMPONENTS_RAW_MATERIALS WHERE COMPONENTS_COMPONENT"},
                     {"ubgBlueItems", "COMPONENTS_ITEMS WHERE COMPONENT_NAME"}};
        int rows = 0;
        for (const auto& g : grids) {
            const int expected =
                f.scalar(QString("SELECT COUNT(*) FROM %1 = '%2'").arg(g.count, quoted(name))).toInt();
            QCOMPARE(w->grid(g.grid)->grid().lastDataRow(), expected);
            rows += expected;
        }
        QVERIFY(rows > 0);
        QCOMPARE(w->grid("ubgBlueComps")->grid().header(1), QString("Component Name"));
        // A second request brings the same window forward.
        QCOMPARE(editor(name), w);
    }

    // A new component is written without its fee; the fee is written when it is saved again.
    void theFeeIsWrittenOnlyOnceTheComponentExists() {
        auto* w = editor("");
        QVERIFY(w && w->isNew());
        QVERIFY(!w->txtManufPrice->isEnabled());
        w->txtName->setText("Gunner's Sight");
        w->txtPrice->setText("80");
        w->txtManufPrice->setText("30"); // were the box open, the INSERT would still leave it out
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        const QString where = " FROM COMPONENTS WHERE COMPONENT_NAME = 'Gunner''s Sight'";
        QVERIFY(f.scalar("SELECT COST_TO_MANUFACTURE" + where).isNull());
        QCOMPARE(f.scalar("SELECT PERSONAL_DB" + where).toBool(), true);
        QCOMPARE(f.scalar("SELECT PRICE" + where).toInt(), 80);
        QApplication::processEvents();

        w = editor("Gunner's Sight");
        QVERIFY(w && w->txtManufPrice->isEnabled());
        QVERIFY(w->txtManufPrice->text().isEmpty());
        w->txtManufPrice->setText("45");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT COST_TO_MANUFACTURE" + where).toInt(), 45);
        QCOMPARE(f.scalar("SELECT UPDATED" + where).toBool(), true);
        QCOMPARE(m_saved, QStringList({"Components: Gunner's Sight", "Components: Gunner's Sight"}));
        QCOMPARE(f.prompt().count(), 0);
    }

    void eachGridWritesRowsItsLoadFindsAgain_data() {
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QString>("check"); // the new row's second column as stored
        const QString n = quoted(Sextant);
        QTest::newRow("used in equipment")
            << "ubgManuEquip" << QStringList{"Hunter's Lance Mk I", "2"}
            << "SELECT AMOUNT FROM EQUIPMENTS_COMPONENTS WHERE COMPONENTS_COMPONENT = '" + n +
                   "' AND EQUIPMENTS_EQUIPMENT = 'Hunter''s Lance Mk I'";
        QTest::newRow("upgraded into")
            << "ubgManuComps" << QStringList{"Deluxe Sextant", "3"}
            << "SELECT AMOUNT FROM COMPONENTS_UPGRADE_FROM WHERE UPGRADE_FROM = '" + n +
                   "' AND COMPONENT_NAME = 'Deluxe Sextant'";
        QTest::newRow("dropped by") << "ubgMOBs" << QStringList{"Brother Kell's Wraith", "Rare"}
                                    << "SELECT DROP_FREQUENCY FROM MOB_COMP_DROP WHERE COMPONENT_NAME = '" +
                                           n + "' AND MOB_NAME = 'Brother Kell''s Wraith'";
        QTest::newRow("built with equipment")
            << "ubgBlueEquip" << QStringList{"Hunter's Lance Mk II", "1"}
            << "SELECT AMOUNT FROM COMPONENTS_EQUIPMENTS WHERE COMPONENT_NAME = '" + n +
                   "' AND EQUIPMENT_NAME = 'Hunter''s Lance Mk II'";
        QTest::newRow("upgraded from")
            << "ubgBlueComps" << QStringList{"Basic Gyro Core", "4"}
            << "SELECT AMOUNT FROM COMPONENTS_UPGRADE_FROM WHERE COMPONENT_NAME = '" + n +
                   "' AND UPGRADE_FROM = 'Basic Gyro Core'";
        QTest::newRow("built with raw materials")
            << "ubgBlueRawMats" << QStringList{"Miner's Gold", "5"}
            << "SELECT AMOUNT FROM COMPONENTS_RAW_MATERIALS WHERE COMPONENTS_COMPONENT = '" + n +
                   "' AND RAW_MATERIAL = 'Miner''s Gold'";
        QTest::newRow("built with items") << "ubgBlueItems" << QStringList{"Smuggler's Ledger", "6"}
                                          << "SELECT AMOUNT FROM COMPONENTS_ITEMS WHERE COMPONENT_NAME = '" +
                                                 n + "' AND ITEM_NAME = 'Smuggler''s Ledger'";
    }
    void eachGridWritesRowsItsLoadFindsAgain() {
        QFETCH(QString, grid);
        QFETCH(QStringList, cells);
        QFETCH(QString, check);
        auto* w = editor(Sextant);
        QVERIFY(w);
        QHash<QString, QString> before; // every grid's rows as loaded
        for (const GridDef& d : comp::grids())
            before.insert(d.widget, GridFingerprint(w->grid(d.widget)->grid()));
        addRow(w->grid(grid), cells);
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar(check).toString(), cells.at(1));
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
        const QString name = "Basic Focusing Lens";
        QVERIFY2(f.exec({"UPDATE COMPONENTS SET TYPE = 'Optics', SUBTYPE = 'Lens', UPDATED = FALSE WHERE "
                         "COMPONENT_NAME = 'Basic Focusing Lens'"},
                        &m_error),
                 qPrintable(m_error));
        auto* w = editor(name);
        QVERIFY(w);
        QCOMPARE(choices(w->cmbType), QStringList({"", "Actuator", "Casing", "Circuitry", "Hull Plating",
                                                   "Optics", "Power Cell", "Unknown"}));
        QCOMPARE(choices(w->cmbSubType), QStringList({"", "Emitter Crystal", "Lens"}));
        w->cmbType->setCurrentText("Circuitry");
        QCOMPARE(choices(w->cmbSubType), QStringList({"", "Logic Board", "Relay"}));
        QCOMPARE(w->cmbSubType->currentText(), QString()); // Circuitry has no "Lens"
        w->cmbSubType->setCurrentText("Relay");
        w->cmbType->setCurrentText("Casing"); // a type without subtypes
        QVERIFY(!w->cmbSubType->isEnabled());
        QVERIFY(w->cmdEditSubTypes->isEnabled());
        w->cmbType->setCurrentIndex(0);
        QVERIFY(!w->cmdEditSubTypes->isEnabled());
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        // No type is NULL, so that the main list's "Unknown" filter still finds the component.
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM COMPONENTS WHERE (TYPE IS NULL OR TYPE = 'Unknown') AND "
                          "SUBTYPE IS NULL AND COMPONENT_NAME = 'Basic Focusing Lens'")
                     .toInt(),
                 1);
    }

    // A type or subtype the lookup tables lack is shown as the record has it, and kept by a save.
    void aRecordsOwnSpellingIsKept() {
        QVERIFY2(
            f.exec({"UPDATE COMPONENTS SET TYPE = 'optics', SUBTYPE = 'Hexagonal' WHERE COMPONENT_NAME = "
                    "'Basic Focusing Lens'"},
                   &m_error),
            qPrintable(m_error));
        auto* w = editor("Basic Focusing Lens");
        QVERIFY(w);
        QCOMPARE(w->cmbType->currentText(), QString("optics"));
        QCOMPARE(w->cmbSubType->currentText(), QString("Hexagonal"));
        w->txtPrice->setText("99");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(
            f.scalar("SELECT TYPE || '/' || SUBTYPE FROM COMPONENTS WHERE COMPONENT_NAME = 'Basic Focusing "
                     "Lens'")
                .toString(),
            QString("optics/Hexagonal"));
    }

    void typeAndSubtypeListsCanBeEdited() {
        auto* w = editor(Sextant);
        QVERIFY(w);
        whenShown<frmListEditDialog>([this](frmListEditDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Modify Component Types"));
            f.prompt().queueText("Scanner's Array");
            d->cmdAddItem_Click();
        });
        w->cmdEditTypes->click();
        QVERIFY(choices(w->cmbType).contains("Scanner's Array"));
        QCOMPARE(w->cmbType->currentText(), QString()); // the record's own choice is untouched
        w->cmbType->setCurrentText("Scanner's Array");
        whenShown<frmListEditDialog>([this](frmListEditDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Modify Component Subtypes"));
            f.prompt().queueText("Wide Band");
            d->cmdAddItem_Click();
        });
        w->cmdEditSubTypes->click();
        QCOMPARE(choices(w->cmbSubType), QStringList({"", "Wide Band"}));
        QVERIFY(w->cmbSubType->isEnabled());
        QCOMPARE(
            f.scalar(
                 "SELECT COMPONENT_TYPE FROM COMPONENT_TYPE_SUBTYPE WHERE COMPONENT_SUBTYPE = 'Wide Band'")
                .toString(),
            QString("Scanner's Array"));
        w->cmbSubType->setCurrentText("Wide Band");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT TYPE || '/' || SUBTYPE FROM COMPONENTS WHERE COMPONENT_NAME = '" +
                          quoted(Sextant) + "'")
                     .toString(),
                 QString("Scanner's Array/Wide Band"));
    }

    void refusedBeforeAnythingIsWritten_data() {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("price");
        QTest::addColumn<QStringList>("equipRow"); // typed into "Used In: Equipment"
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::newRow("no name") << ""
                                 << ""
                                 << "10" << QStringList() << "Empty Data"
                                 << "One or more of the values entered must not be empty";
        QTest::newRow("two adjacent quotes")
            << ""
            << "Navigator''s Sextant"
            << "10" << QStringList() << "Invalid name"
            << "Names cannot contain a double single-quote! Please change name to continue.";
        QTest::newRow("a price that is no number") << ""
                                                   << "Gunner's Sight"
                                                   << "-" << QStringList() << "Invalid Values"
                                                   << "One or more of the values entered is invalid";
        QTest::newRow("a grid row without its amount")
            << ""
            << "Gunner's Sight"
            << "10" << QStringList{"Hunter's Lance Mk I"} << "Manufacturing: Equipment Error"
            << "Manufacturing: Equipment:\r\nPlease specify an entry for Amount\r\nRow: 1,  Column: 2";
        QTest::newRow("a new record's name taken in another letter case")
            << ""
            << "BASIC NAVIGATOR'S SEXTANT"
            << "10" << QStringList() << "Duplicate Record"
            << "The name of the item you entered already exists, please rename this item";
    }
    void refusedBeforeAnythingIsWritten() {
        QFETCH(QString, record);
        QFETCH(QString, name);
        QFETCH(QString, price);
        QFETCH(QStringList, equipRow);
        QFETCH(QString, title);
        QFETCH(QString, text);
        auto* w = editor(record);
        QVERIFY(w);
        if (record.isEmpty())
            w->txtName->setText(name);
        w->txtPrice->setText(price);
        if (!equipRow.isEmpty())
            addRow(w->ubgManuEquip, equipRow);
        const int before = sqlite3_total_changes(db().handle());
        const SaveResult result = w->cmdSave_Click();
        QVERIFY(result == SaveResult::Refused || result == SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, title);
        QCOMPARE(f.prompt().last().text, text);
        // The window stays open with the user's edits; nothing stays written.
        QVERIFY(w->isVisible());
        QCOMPARE(w->txtPrice->text(), price);
        QCOMPARE(w->ubgManuEquip->grid().lastDataRow(), int(equipRow.size()));
        QVERIFY(!db().inTransaction());
        QVERIFY(m_saved.isEmpty());
        if (title != "Duplicate Record")
            QCOMPARE(sqlite3_total_changes(db().handle()), before);
        QCOMPARE(
            f.scalar("SELECT COUNT(*) FROM COMPONENTS WHERE COMPONENT_NAME LIKE 'basic navigator%'").toInt(),
            1);
    }

    void failureInTheLastGridWriteRollsEverythingBack() {
        const QString where = " WHERE COMPONENT_NAME = '" + quoted(Sextant) + "'";
        const QString price = f.scalar("SELECT PRICE FROM COMPONENTS" + where).toString();
        const int blueprint = f.scalar("SELECT COUNT(*) FROM COMPONENTS_RAW_MATERIALS").toInt();
        const QString sold =
            "SELECT STATIONS_STATION FROM BUY_COMPONENT_LOCATIONS WHERE COMPONENTS_COMPONENT = '" +
            quoted(Sextant) + "' ORDER BY STATIONS_STATION";
        const QStringList stations = column(sold);
        QVERIFY(!stations.contains(Kells));
        auto* w = editor(Sextant);
        QVERIFY(w);
        w->txtPrice->setText("12345");
        w->txtManufPrice->setText("-1");
        w->lstBuyLocations->addItem(Kells);
        addRow(w->ubgBlueRawMats, {"Miner's Gold", "4"});
        // ubgManuComps is written last; its amount cannot be stored.
        addRow(w->ubgManuComps, {"Deluxe Sextant", "plenty"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().title, QString("Invalid Values"));
        QVERIFY(!db().inTransaction());
        QCOMPARE(f.scalar("SELECT PRICE FROM COMPONENTS" + where).toString(), price);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM COMPONENTS_RAW_MATERIALS").toInt(), blueprint);
        QCOMPARE(column(sold), stations);
        QVERIFY(w->isVisible());
        QCOMPARE(w->txtPrice->text(), QString("12345"));
        const int last = w->ubgManuComps->grid().lastDataRow();
        QCOMPARE(w->ubgManuComps->grid().text(last, 2), QString("plenty"));
        // Corrected, the same window saves everything.
        w->ubgManuComps->grid().userEdit(last, 2, "2");
        QCOMPARE(w->cmdSave_Click(), SaveResult::Saved);
        QCOMPARE(f.scalar("SELECT PRICE FROM COMPONENTS" + where).toInt(), 12345);
        QCOMPARE(f.scalar("SELECT COST_TO_MANUFACTURE FROM COMPONENTS" + where).toInt(), -1);
        QCOMPARE(f.scalar("SELECT COUNT(*) FROM COMPONENTS_RAW_MATERIALS").toInt(), blueprint + 1);
        QVERIFY(column(sold).contains(Kells));
        QCOMPARE(column(sold).size(), stations.size() + 1);
    }

    void aMissingRecordIsReported() {
        OpenEditor("Components", "Nothing Here");
        QCOMPARE(f.prompt().count(), 1);
        QVERIFY(f.prompt().last().text.endsWith("procedure Form_Load of Form frmAddComponent"));
        QVERIFY(!FindChildWindow("Edit: Nothing Here"));
        // A component deleted while its editor is open is not written back, nor are its link rows.
        const QString drops =
            "SELECT COUNT(*) FROM MOB_COMP_DROP WHERE COMPONENT_NAME = '" + quoted(Sextant) + "'";
        const int before = f.scalar(drops).toInt();
        auto* w = editor(Sextant);
        QVERIFY(w);
        QVERIFY2(
            f.exec({"DELETE FROM COMPONENTS WHERE COMPONENT_NAME = '" + quoted(Sextant) + "'"}, &m_error),
            qPrintable(m_error));
        addRow(w->ubgMOBs, {"Ashen Maw", "Rare"});
        QCOMPARE(w->cmdSave_Click(), SaveResult::Failed);
        QVERIFY(f.prompt().last().text.endsWith("procedure cmdSave_Click of Form frmAddComponent"));
        QCOMPARE(f.scalar(drops).toInt(), before);
    }

    void tabVisitsTheFieldsInOrder() {
        QVERIFY2(
            f.exec({"UPDATE COMPONENTS SET TYPE = 'Optics' WHERE COMPONENT_NAME = 'Basic Focusing Lens'"},
                   &m_error),
            qPrintable(m_error));
        auto* w = editor("Basic Focusing Lens");
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
    QStringList column(const QString& sql) {
        Recordset rs;
        rs.open(sql);
        QStringList out;
        for (; !rs.eof(); rs.moveNext())
            out << rs.value(0).toString();
        return out;
    }

    ViewsFixture f;
    QString m_error;
    QStringList m_saved;
};

QTEST_MAIN(TestFrmAddComponent)
#include "tst_frmaddcomponent.moc"
