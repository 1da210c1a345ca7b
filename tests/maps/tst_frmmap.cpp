// The map window on the sample world: opening it (from the menu, a MOB's spawn tree, a station view),
// the choosers, centring on a nav point, and adding, changing and deleting locations through it.
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "maps/ctlmap.h"
#include "maps/frmaddlocation.h"
#include "maps/frmmap.h"
#include "views/frmmobs.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"
#include "viewsfixture.h"
#include "viewswindows.h"

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
QList<QPair<QString, QString>> g_opened;
void recordOpen(const QString& sector, const QString& navPoint) {
    g_opened.append({sector, navPoint});
}

void sendClick(QWidget* w, QPointF pos) {
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent e(type, pos, w->mapToGlobal(pos), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(w, &e);
    }
}

QStringList items(const QComboBox* box) {
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out << box->itemText(i);
    return out;
}
} // namespace

class TestFrmMap : public QObject {
    Q_OBJECT
private:
    ViewsFixture f;

    frmMap* shown() {
        frmMap* w = MapWindow();
        if (w && QTest::qWaitForWindowExposed(w))
            return w;
        return nullptr;
    }
    int rows(const QString& where) { return f.scalar("SELECT count(*) FROM " + where).toInt(); }
    // A nav point where MOBs spawn, and one where none do, both in the same sector.
    QPair<QString, QString> spawnPlace() {
        Recordset rs;
        rs.open("SELECT SECTOR_NAME, NAV_POINT FROM MOBS_LOCATION ORDER BY SECTOR_NAME, NAV_POINT");
        return {rs.value(0).toString(), rs.value(1).toString()};
    }

private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(true, &error), qPrintable(error));
        g_opened.clear();
    }
    void cleanup() {
        setMapOpener(nullptr);
        closeViews();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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
        QVERIFY(w->lstLocations->topLevelItemCount() >= 10);
        // Choosing another system shows its first sector; the last one shown is remembered.
        w->cmbSystem->setCurrentText("Veyl");
        QCOMPARE(items(w->cmbSector), (QStringList{"Veyl Drift", "Veyl Prime", "Veyl Verge"}));
        w->cmbSector->setCurrentText("Veyl Verge");
        QCOMPARE(w->sector(), QString("Veyl Verge"));
        QCOMPARE(w->map->points().size(), rows("NAV_POINTS WHERE SECTOR_NAME = 'Veyl Verge'"));
        closeViews();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        OpenMap();
        QCOMPARE(shown()->sector(), QString("Veyl Verge"));
        // One map window: asking again brings it forward on the sector asked for.
        OpenMap("Mossgate Prime");
        QCOMPARE(QApplication::topLevelWidgets().count(MapWindow()), 1);
        QCOMPARE(visibleWindows("Sector Map: Mossgate Prime", "frmMap"), 1);
        QCOMPARE(f.prompt().count(), 0);
    }

    void centresOnANavPoint() {
        const auto [sector, nav] = spawnPlace();
        OpenMap(sector, nav);
        frmMap* w = shown();
        QVERIFY(w);
        QCOMPARE(w->cmbSector->currentText(), sector);
        QCOMPARE(w->map->selected().toLower(), nav.toLower());
        const NavPoint& p = w->map->points().at(w->map->indexOf(nav));
        QVERIFY(std::fabs(w->map->view().centre().x() - p.x) < 1e-6 &&
                std::fabs(w->map->view().centre().y() - p.y) < 1e-6);
        QCOMPARE(w->lstLocations->currentItem()->text(0), p.name);
        // What is there: the MOBs that spawn at it, each a link to its view.
        const QString mob = f.scalar("SELECT MOB_NAME FROM MOBS_LOCATION WHERE SECTOR_NAME = '" +
                                     QString(sector).replace("'", "''") + "' AND NAV_POINT = '" +
                                     QString(nav).replace("'", "''") + "' ORDER BY MOB_NAME")
                                .toString();
        QVERIFY(w->txtDetails->toHtml().contains(mob.toHtmlEscaped()));
        // Resting the pointer on the point tells the same.
        const QPoint at = w->map->view().toScreen(QPointF(p.x, p.y)).toPoint();
        QHelpEvent help(QEvent::ToolTip, at, w->map->viewport()->mapToGlobal(at));
        QApplication::sendEvent(w->map->viewport(), &help);
        QVERIFY2(QToolTip::text().contains("MOBs spawning here") &&
                     QToolTip::text().contains(mob.toHtmlEscaped()),
                 qPrintable(QToolTip::text()));
        Q_EMIT w->txtDetails->anchorClicked(QUrl("mob:" + QUrl::toPercentEncoding(mob)));
        QVERIFY(visibleWindows(mob, "frmMOBs") == 1);
        // A point that is not charted leaves the sector shown, with a word why.
        OpenMap(sector, "Nowhere Special");
        QCOMPARE(w->lblNotice->text(), "'Nowhere Special' is not charted in " + sector + ".");
        QCOMPARE(f.prompt().count(), 0);
    }

    void aSectorThatIsNotThere() {
        OpenMap("Atlantis");
        QVERIFY(!MapWindow());
        QCOMPARE(f.prompt().count(), 1);
        QCOMPARE(f.prompt().last().text,
                 QString("The sector 'Atlantis' is not in the database, so there is no map of it."));
    }

    void theViewsLinkToTheMap() {
        // Without maps wired, the station view's button is there but does nothing.
        ViewStation("Kell's Anchorage");
        auto* station = qobject_cast<frmRecordView*>(FindChildWindow("Station: Kell's Anchorage"));
        QVERIFY(station && !station->cmdMap->isHidden() && !station->cmdMap->isEnabled());
        closeViews();

        setMapOpener(&recordOpen);
        ViewStation("Kell's Anchorage");
        station = qobject_cast<frmRecordView*>(FindChildWindow("Station: Kell's Anchorage"));
        QVERIFY(station && station->cmdMap->isEnabled());
        station->cmdMap->click();
        const QString sector =
            f.scalar("SELECT SECTORS_SECTOR FROM STATIONS WHERE STATION_NAME = 'Kell''s Anchorage'")
                .toString();
        QCOMPARE(g_opened.value(0), qMakePair(sector, QString("Kell's Anchorage")));

        // The spawn tree: a sector opens its map, a nav point its map centred there; nothing else does.
        g_opened.clear();
        const QString mob = f.scalar("SELECT MOB_NAME FROM MOBS_LOCATION ORDER BY MOB_NAME").toString();
        ViewMOBInfo(mob);
        frmMOBs* view = nullptr;
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* m = qobject_cast<frmMOBs*>(top); m && m->windowTitle() == mob)
                view = m;
        QVERIFY(view);
        QTreeWidgetItem* sectorNode = view->treSpawn->topLevelItem(0);
        QTreeWidgetItem* navNode = sectorNode->child(0);
        Q_EMIT view->treSpawn->itemDoubleClicked(sectorNode, 0);
        Q_EMIT view->treSpawn->itemDoubleClicked(navNode, 0);
        QCOMPARE(g_opened, (QList<QPair<QString, QString>>{{sectorNode->text(0), QString()},
                                                           {sectorNode->text(0), navNode->text(0)}}));
        QCOMPARE(f.prompt().count(), 0);
    }

    void aMobWithoutSpawnsLinksNowhere() {
        setMapOpener(&recordOpen);
        const QString mob =
            f.scalar("SELECT MOB_NAME FROM MOBS WHERE MOB_NAME NOT IN (SELECT MOB_NAME FROM MOBS_LOCATION)")
                .toString();
        QVERIFY(!mob.isEmpty());
        ViewMOBInfo(mob);
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* m = qobject_cast<frmMOBs*>(top); m && m->windowTitle() == mob)
                Q_EMIT m->treSpawn->itemDoubleClicked(m->treSpawn->topLevelItem(0), 0); // "No Records Found"
        QVERIFY(g_opened.isEmpty());
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
        // A click on the map puts the location there (to the whole unit) and shows it faintly.
        const QPointF click(300, 240);
        const QPointF world = w->map->view().toWorld(click);
        sendClick(w->map->viewport(), click);
        QCOMPARE(form->txtX->text().toDouble(), std::round(world.x()));
        QCOMPARE(form->txtY->text().toDouble(), std::round(world.y()));
        form->txtName->setText("Tamsin's Beacon");
        form->cmbType->setCurrentText("Navigation Point");
        form->txtComments->setPlainText("Lit on the first of the month.");
        const double scale = w->map->view().scale();
        QVERIFY(form->cmdSave_Click());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!w->locationForm() && !w->map->placing());
        QCOMPARE(w->lstLocations->topLevelItemCount(), before + 1);
        QCOMPARE(w->map->selected(), QString("Tamsin's Beacon"));
        QCOMPARE(w->map->view().scale(), scale); // the view stays where the player left it
        QCOMPARE(
            rows("NAV_POINTS WHERE SECTOR_NAME = 'Veyl Prime' AND NAV_POINT_NAME = 'Tamsin''s Beacon' AND "
                 "NAV_TYPE = 'Navigation Point' AND X_POINT = " +
                 QString::number(std::round(world.x())) + " AND COMMENTS = 'Lit on the first of the month.'"),
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
        QVERIFY(w->locationForm() && form->isVisible());
        QVERIFY(!db().inTransaction());
        form->txtName->setText("Spare Beacon");
        form->txtX->setText("far east");
        QVERIFY(!form->cmdSave_Click());
        QCOMPARE(f.prompt().last().title, QString("Invalid Coordinate"));
        QCOMPARE(rows("NAV_POINTS WHERE NAV_POINT_NAME = 'Spare Beacon'"), 0);
        // A second form is not opened over the first.
        w->cmdAdd_Click();
        QCOMPARE(w->locationForm(), form);
        QCOMPARE(w->lblNotice->text(), QString("Finish or cancel the open location form first."));
    }

    void editingAndDeleting() {
        const auto [sector, nav] = spawnPlace();
        OpenMap(sector, nav);
        frmMap* w = shown();
        QVERIFY(w && w->cmdEdit->isEnabled() && w->cmdDelete->isEnabled());
        // Where MOBs spawn, the location is not deleted.
        const int count = w->lstLocations->topLevelItemCount();
        w->cmdDelete_Click();
        QCOMPARE(f.prompt().last().title, QString("Location In Use"));
        QCOMPARE(w->lstLocations->topLevelItemCount(), count);

        // A new name is carried to the MOBs that spawn there.
        const int spawns = rows("MOBS_LOCATION WHERE SECTOR_NAME = '" + QString(sector).replace("'", "''") +
                                "' AND NAV_POINT = '" + QString(nav).replace("'", "''") + "'");
        w->cmdEdit_Click();
        frmAddLocation* form = w->locationForm();
        QVERIFY(form && form->editing());
        QCOMPARE(form->txtName->text(), w->map->selected());
        form->txtName->setText("Renamed Haunt");
        QVERIFY(form->cmdSave_Click());
        QCOMPARE(w->map->selected(), QString("Renamed Haunt"));
        QCOMPARE(rows("MOBS_LOCATION WHERE SECTOR_NAME = '" + QString(sector).replace("'", "''") +
                      "' AND NAV_POINT = 'Renamed Haunt'"),
                 spawns);

        // A location where nothing spawns is deleted once the player says yes.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QString free;
        for (const NavPoint& p : w->map->points())
            if (rows("MOBS_LOCATION WHERE SECTOR_NAME = '" + QString(sector).replace("'", "''") +
                     "' AND NAV_POINT = '" + QString(p.name).replace("'", "''") + "'") == 0)
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
