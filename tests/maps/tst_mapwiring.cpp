// The maps as the program wires them: View > Sector Maps is enabled and opens the map, and the views'
// links (a MOB's spawn tree, a station's Show on Map) open the map window centred on the place.
#include "app/frmmain.h"
#include "maps/ctlmap.h"
#include "maps/frmmap.h"
#include "views/frmmobs.h"
#include "views/frmrecord.h"
#include "views/openviews.h"
#include "viewsfixture.h"
#include "viewswindows.h"

#include <QAction>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

class TestMapWiring : public QObject {
    Q_OBJECT
private:
    ViewsFixture f;
    std::unique_ptr<frmMain> main;

private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(true, &error), qPrintable(error));
        main = std::make_unique<frmMain>();
    }
    void cleanup() {
        closeViews();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        main.reset();
        setMapOpener(nullptr);
        f.tearDown();
    }

    void theMenuOpensTheMap() {
        QAction* entry = main->menuEntry("mnuViewMaps");
        QVERIFY(entry && entry->isEnabled());
        entry->trigger();
        frmMap* map = MapWindow();
        QVERIFY(map && map->isVisible());
        QCOMPARE(map->sector(), QString("Aldra Drift"));
        QVERIFY(!map->map->points().isEmpty());
        QCOMPARE(f.prompt().count(), 0);
    }

    void theViewsOpenTheMapCentred() {
        QVERIFY(mapOpener());
        ViewStation("Harrow Station");
        auto* station = qobject_cast<frmRecordView*>(FindChildWindow("Station: Harrow Station"));
        QVERIFY(station && station->cmdMap->isEnabled());
        station->cmdMap->click();
        QVERIFY(MapWindow());
        QCOMPARE(MapWindow()->map->selected(), QString("Harrow Station"));
        QCOMPARE(MapWindow()->map->view().centre(),
                 QPointF(MapWindow()->map->points().at(MapWindow()->map->indexOf("Harrow Station")).x,
                         MapWindow()->map->points().at(MapWindow()->map->indexOf("Harrow Station")).y));

        const QString mob = f.scalar("SELECT MOB_NAME FROM MOBS_LOCATION ORDER BY MOB_NAME DESC").toString();
        ViewMOBInfo(mob);
        frmMOBs* view = nullptr;
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* m = qobject_cast<frmMOBs*>(top); m && m->windowTitle() == mob)
                view = m;
        QVERIFY(view);
        QTreeWidgetItem* nav = view->treSpawn->topLevelItem(0)->child(0);
        Q_EMIT view->treSpawn->itemDoubleClicked(nav, 0);
        QCOMPARE(MapWindow()->sector(), view->treSpawn->topLevelItem(0)->text(0));
        QCOMPARE(MapWindow()->map->selected().toLower(), nav->text(0).toLower());
        QCOMPARE(visibleWindows(MapWindow()->windowTitle(), "frmMap"), 1);
        QCOMPARE(f.prompt().count(), 0);
    }
};

QTEST_MAIN(TestMapWiring)
#include "tst_mapwiring.moc"
