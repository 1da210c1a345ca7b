// The map window on the sample world: opening it (from the menu, a MOB's spawn tree, a station view),
// the choosers, centring on a nav point, and adding, changing and deleting locations through it.
#include "app/frmmain.h"
#include "data/database.h"
#include "data/recordset.h"
#include "maps/ctlmap.h"
#include "maps/frmaddlocation.h"
#include "maps/frmmap.h"
#include "views/frmmobs.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QToolTip>
#include <QTreeWidget>

#include <cmath>

namespace {
QStringList items(const QComboBox* box) {
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out << box->itemText(i);
    return out;
}
frmMOBs* mobView(const QString& mob) {
    ViewMOBInfo(mob);
    for (QWidget* top : QApplication::topLevelWidgets())
        if (auto* m = qobject_cast<frmMOBs*>(top); m && m->windowTitle() == mob)
            return m;
    return nullptr;
}
QString q(QString text) {
    return text.replace("'", "''");
}
} // namespace

class TestFrmMap : public QObject {
    Q_OBJECT
private:
    ViewsFixture f;

    frmMap* shown() {
        frmMap* w = MapWindow();
        return w && QTest::qWaitForWindowExposed(w) ? w : nullptr;
    }
    int rows(const QString& where) { return f.scalar("SELECT count(*) FROM " + where).toInt(); }
    void closeMap() {
        closeViews();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // A nav point where MOBs spawn.
    QPair<QString, QString> spawnPlace() {
        Recordset rs;
        rs.open("SELECT SECTOR_NAME, NAV_POINT FROM MOBS_LOCATION ORDER BY SECTOR_NAME, NAV_POINT");
        return {rs.value(0).toString(), rs.value(1).toString()};
    }

private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(true, &error), qPrintable(error));
    }
    void cleanup() {
        setMapOpener(nullptr);
        closeMap();
        QVERIFY(!MapWindow());
        f.tearDown();
    }

    void opensOnTheLastSectorOrTheFirst() {
        OpenMap();
        frmMap* w = shown();
        QVERIFY(w);
        QCOMPARE(w->sector(), QString("Aldra Drift")); // first system, first sector
        QCOMPARE(items(w->cmbSystem), (QStringList{"Aldra", "Corrin Reach", "Mossgate", "Veyl"}));
        QCOMPARE(w->windowTitle(), QString("Sector Map: Aldra Drift"));
        QCOMPARE(w->lstLocations->topLevelItemCount(), rows("NAV_POINTS WHERE SECTOR_NAME = 'Aldra Drift'"));
        // Choosing another system shows its first sector; the last one shown is remembered.
        w->cmbSystem->setCurrentText("Veyl");
        QCOMPARE(items(w->cmbSector), (QStringList{"Veyl Drift", "Veyl Prime", "Veyl Verge"}));
        w->cmbSector->setCurrentText("Veyl Verge");
        QCOMPARE(w->map->points().size(), rows("NAV_POINTS WHERE SECTOR_NAME = 'Veyl Verge'"));
        closeMap();
        OpenMap();
        QCOMPARE(shown()->sector(), QString("Veyl Verge"));
        // One map window: asking again brings it forward on the sector asked for.
        OpenMap("Mossgate Prime");
        QCOMPARE(QApplication::topLevelWidgets().count(MapWindow()), 1);
        QCOMPARE(visibleWindows("Sector Map: Mossgate Prime", "frmMap"), 1);
        QCOMPARE(f.prompt().count(), 0);
        OpenMap("Atlantis");
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().text,
                 QString("The sector 'Atlantis' is not in the database, so there is no map of it."));
        closeMap();
        OpenMap("Atlantis");
        QVERIFY(!MapWindow());
    }

    void centresOnANavPoint() {
        const auto [sector, nav] = spawnPlace();
        OpenMap(sector, nav);
        frmMap* w = shown();
        QVERIFY(w);
        QCOMPARE(w->cmbSector->currentText(), sector);
        QCOMPARE(w->map->selected().toLower(), nav.toLower());
        const NavPoint& p = w->map->points().at(w->map->indexOf(nav));
        QCOMPARE(w->map->view().centre(), QPointF(p.x, p.y));
        QCOMPARE(w->lstLocations->currentItem()->text(0), p.name);
        // What is there: the MOBs that spawn at it, each a link to its view; resting the pointer on the
        // point tells the same.
        const QString mob = f.scalar("SELECT MOB_NAME FROM MOBS_LOCATION WHERE SECTOR_NAME = '" + q(sector) +
                                     "' AND NAV_POINT = '" + q(nav) + "' ORDER BY MOB_NAME")
                                .toString();
        QVERIFY(w->txtDetails->toHtml().contains(mob.toHtmlEscaped()));
        const QPoint at = w->map->view().toScreen(QPointF(p.x, p.y)).toPoint();
        QHelpEvent help(QEvent::ToolTip, at, w->map->viewport()->mapToGlobal(at));
        QApplication::sendEvent(w->map->viewport(), &help);
        QVERIFY2(QToolTip::text().contains("MOBs spawning here") &&
                     QToolTip::text().contains(mob.toHtmlEscaped()),
                 qPrintable(QToolTip::text()));
        Q_EMIT w->txtDetails->anchorClicked(QUrl("mob:" + QUrl::toPercentEncoding(mob)));
        QCOMPARE(visibleWindows(mob, "frmMOBs"), 1);
        // A point that is not charted leaves the sector shown, with a word why.
        OpenMap(sector, "Nowhere Special");
        QCOMPARE(w->lblNotice->text(), "'Nowhere Special' is not charted in " + sector + ".");
        QCOMPARE(f.prompt().count(), 0);
    }

    // Without maps wired, the station view's button is there but does nothing. As the program wires
    // them, View > Sector Maps opens the map, and the views' links (a station's Show on Map, a MOB's
    // spawn tree: a sector its map, a nav point its map centred there) open it on the place.
    void theProgramWiresTheMap() {
        ViewStation("Kell's Anchorage");
        auto* station = qobject_cast<frmRecordView*>(FindChildWindow("Station: Kell's Anchorage"));
        QVERIFY(station && !station->cmdMap->isHidden() && !station->cmdMap->isEnabled());
        closeViews();
        frmMain main;
        QVERIFY(mapOpener());
        QAction* entry = main.menuEntry("mnuViewMaps");
        QVERIFY(entry && entry->isEnabled());
        entry->trigger();
        QVERIFY(MapWindow() && MapWindow()->isVisible() && MapWindow()->sector() == "Aldra Drift");
        closeMap();
        ViewStation("Harrow Station");
        station = qobject_cast<frmRecordView*>(FindChildWindow("Station: Harrow Station"));
        QVERIFY(station && station->cmdMap->isEnabled());
        station->cmdMap->click();
        QVERIFY(MapWindow());
        QCOMPARE(
            MapWindow()->sector(),
            f.scalar("SELECT SECTORS_SECTOR FROM STATIONS WHERE STATION_NAME = 'Harrow Station'").toString());
        QCOMPARE(MapWindow()->map->selected(), QString("Harrow Station"));
        closeMap();

        frmMOBs* view =
            mobView(f.scalar("SELECT MOB_NAME FROM MOBS_LOCATION ORDER BY MOB_NAME DESC").toString());
        QVERIFY(view);
        QTreeWidgetItem* sectorNode = view->treSpawn->topLevelItem(0);
        QTreeWidgetItem* navNode = sectorNode->child(0);
        Q_EMIT view->treSpawn->itemDoubleClicked(sectorNode, 0);
        QVERIFY(MapWindow() && MapWindow()->sector() == sectorNode->text(0));
        QVERIFY(MapWindow()->map->selected().isEmpty());
        Q_EMIT view->treSpawn->itemDoubleClicked(navNode, 0);
        QCOMPARE(MapWindow()->map->selected().toLower(), navNode->text(0).toLower());
        QCOMPARE(visibleWindows(MapWindow()->windowTitle(), "frmMap"), 1);
        closeMap();
        // A MOB that spawns nowhere has only "No Records Found", which opens nothing.
        view = mobView(
            f.scalar("SELECT MOB_NAME FROM MOBS WHERE MOB_NAME NOT IN (SELECT MOB_NAME FROM MOBS_LOCATION)")
                .toString());
        QVERIFY(view);
        Q_EMIT view->treSpawn->itemDoubleClicked(view->treSpawn->topLevelItem(0), 0);
        QVERIFY(!MapWindow());
        QCOMPARE(f.prompt().count(), 0);
    }

    void addingByClickingTheMap() {
        OpenMap("Veyl Prime");
        frmMap* w = shown();
        QVERIFY(w);
        const int before = w->lstLocations->topLevelItemCount();
        w->cmdAdd_Click();
        frmAddLocation* form = w->locationForm();
        QVERIFY(form && form->isVisible() && w->map->placing());
        QCOMPARE(form->lblSector->text(), QString("Veyl Prime"));
        // A click on the map puts the location there (to the whole unit).
        const QPointF click(300, 240);
        const QPointF world = w->map->view().toWorld(click);
        for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent e(type, click, w->map->viewport()->mapToGlobal(click), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(w->map->viewport(), &e);
        }
        QCOMPARE(form->txtX->text().toDouble(), std::round(world.x()));
        QCOMPARE(form->txtY->text().toDouble(), std::round(world.y()));
        form->txtName->setText("Tamsin's Beacon");
        form->cmbType->setCurrentText("Navigation Point");
        const double scale = w->map->view().scale();
        QVERIFY(form->cmdSave_Click());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!w->locationForm() && !w->map->placing());
        QCOMPARE(w->lstLocations->topLevelItemCount(), before + 1);
        QCOMPARE(w->map->selected(), QString("Tamsin's Beacon"));
        QCOMPARE(w->map->view().scale(), scale); // the view stays where the player left it
        QCOMPARE(rows("NAV_POINTS WHERE NAV_POINT_NAME = 'Tamsin''s Beacon' AND X_POINT = " +
                      QString::number(std::round(world.x()))),
                 1);
        QCOMPARE(f.prompt().count(), 0);
    }

    void aRefusedSaveKeepsTheForm() {
        OpenMap("Veyl Prime");
        frmMap* w = shown();
        const QString taken = w->map->points().first().name;
        w->addLocationAt(QPointF(100, 200));
        frmAddLocation* form = w->locationForm();
        QVERIFY(form);
        QCOMPARE(form->txtX->text() + "," + form->txtY->text(), QString("100,200"));
        form->txtName->setText(taken.toUpper());
        QVERIFY(!form->cmdSave_Click());
        QCOMPARE(f.prompt().last().title, QString("Duplicate Record"));
        QVERIFY(w->locationForm() && form->isVisible() && !db().inTransaction());
        w->cmdAdd_Click(); // a second form is not opened over the first
        QCOMPARE(w->locationForm(), form);
        QCOMPARE(w->lblNotice->text(), QString("Finish or cancel the open location form first."));
    }

    void editingAndDeleting() {
        const auto [sector, nav] = spawnPlace();
        OpenMap(sector, nav);
        frmMap* w = shown();
        QVERIFY(w && w->cmdEdit->isEnabled() && w->cmdDelete->isEnabled());
        const int count = w->lstLocations->topLevelItemCount();
        w->cmdDelete_Click(); // where MOBs spawn, the location is not deleted
        QCOMPARE(f.prompt().last().title, QString("Location In Use"));
        QCOMPARE(w->lstLocations->topLevelItemCount(), count);
        const QString at = "MOBS_LOCATION WHERE SECTOR_NAME = '" + q(sector) + "' AND NAV_POINT = '";
        w->cmdEdit_Click();
        frmAddLocation* form = w->locationForm();
        QVERIFY(form && form->editing());
        QCOMPARE(form->txtName->text(), w->map->selected());
        form->txtName->setText("Renamed Haunt");
        QVERIFY(form->cmdSave_Click());
        QCOMPARE(w->map->selected(), QString("Renamed Haunt"));
        // A location where nothing spawns is deleted once the player says yes.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QString free;
        for (const NavPoint& p : w->map->points())
            if (rows(at + q(p.name) + "'") == 0)
                free = p.name;
        QVERIFY(!free.isEmpty());
        w->map->setSelected(free);
        f.prompt().queueButton(vb::Yes);
        w->cmdDelete_Click();
        QCOMPARE(w->lstLocations->topLevelItemCount(), count - 1);
        QCOMPARE(w->map->indexOf(free), -1);
        QVERIFY(!w->cmdDelete->isEnabled());
    }
};

QTEST_MAIN(TestFrmMap)
#include "tst_frmmap.moc"
