// The places as the map reads them (systems, sectors, points, what is at a point) and the location
// writes: what is refused before anything is written, what each write changes, and that a failed
// write leaves the database as it was.
#include "data/database.h"
#include "data/errorreport.h"
#include "maps/locationedit.h"
#include "maps/locations.h"
#include "viewsfixture.h"

#include <QTest>

#include <cmath>
#include <sqlite3.h>

class TestLocations : public QObject {
    Q_OBJECT
private:
    ViewsFixture f;

    int count(const QString& where) { return f.scalar("SELECT count(*) FROM " + where).toInt(); }
    NavPoint point(const QString& name) {
        for (const NavPoint& p : LoadSector("Kell's Reach"))
            if (p.name == name)
                return p;
        return NavPoint();
    }
    void checkPrompt(const QString& title, const QString& text, int style = vb::Exclamation) {
        QCOMPARE(f.prompt().last().title, title);
        QCOMPARE(f.prompt().last().text, text);
        QCOMPARE(f.prompt().last().style, style);
    }

private Q_SLOTS:
    void init() {
        QString error;
        QVERIFY2(f.setUp(false, &error), qPrintable(error));
        QVERIFY2(
            f.exec(
                {
                    "INSERT INTO SYSTEMS (SYSTEM_NAME) VALUES ('Veyl'), ('Aldra')",
                    "INSERT INTO SECTORS (SECTOR_NAME, SYSTEM_SYSTEM_NAME) VALUES ('Kell''s Reach', 'Veyl'), "
                    "('Aldra Prime', 'Aldra'), ('Aldra Drift', 'Aldra'), ('Lost Verge', NULL), ('Nowhere', 'Gone')",
                    "INSERT INTO NAV_TYPES (NAV_TYPE) VALUES ('Asteroid'), ('Gate'), ('Navigation Point'), ('Planet'), "
                    "('Satellite'), ('Ship'), ('Ship Yard'), ('Station'), ('Weft')",
                    "INSERT INTO NAV_POINTS (NAV_POINT_NAME, SECTOR_NAME, COMMENTS, X_POINT, Y_POINT, NAV_TYPE) VALUES "
                    "('Old Gate', 'Kell''s Reach', 'Watch the <b>rocks</b>\nand the drones.', -7000.5, 1200, 'Gate'), "
                    "('Dunmore''s Rest', 'Kell''s Reach', NULL, 300, -450.25, 'Station'), "
                    "('Cinder Rock', 'Kell''s Reach', NULL, NULL, NULL, 'Moon'), "
                    "('Old Gate', 'Aldra Prime', NULL, 5, 5, 'Gate')",
                    "INSERT INTO STATIONS (STATION_NAME, SECTORS_SECTOR) VALUES ('Dunmore''s Rest', 'Kell''s Reach'), "
                    "('Old Gate', 'Aldra Prime')",
                    "INSERT INTO MOBS_LOCATION (MOB_NAME, SECTOR_NAME, NAV_POINT, SPAWN_RATE) VALUES "
                    "('Rust Eater', 'Kell''s Reach', 'Old Gate', 'Fast'), ('Iron Maw', 'Kell''s Reach', 'Old Gate', NULL), "
                    "('Pale Leech', 'Aldra Prime', 'Old Gate', 'Slow')",
                },
                &error),
            qPrintable(error));
    }
    void cleanup() { f.tearDown(); }

    void systemsSectorsAndPoints() {
        // Sectors of no system, or of one SYSTEMS does not hold, are found under their own entry.
        QCOMPARE(MapSystems(), (QStringList{"Aldra", "Veyl", NoSystem}));
        QCOMPARE(MapSectors("Aldra"), (QStringList{"Aldra Drift", "Aldra Prime"}));
        QCOMPARE(MapSectors("veyl"), QStringList{"Kell's Reach"});
        QCOMPARE(MapSectors(NoSystem), (QStringList{"Lost Verge", "Nowhere"}));
        QCOMPARE(SystemOfSector("kell's reach"), QString("Veyl"));
        QCOMPARE(SystemOfSector("Nowhere") + SystemOfSector("Lost Verge"), NoSystem + NoSystem);
        QCOMPARE(SystemOfSector("Atlantis"), QString());
        QCOMPARE(MapNavTypes().size(), 9);
        const QList<NavPoint> points = LoadSector("Kell's Reach");
        QStringList names;
        for (const NavPoint& p : points)
            names << p.name + " " + p.type + " " + QString::number(int(p.kind));
        // An unknown type keeps its word; missing coordinates read as 0.
        QCOMPARE(names, (QStringList{"Cinder Rock Moon " + QString::number(int(NavKind::Unknown)),
                                     "Dunmore's Rest Station " + QString::number(int(NavKind::Station)),
                                     "Old Gate Gate " + QString::number(int(NavKind::Gate))}));
        QCOMPARE(points.at(2).sector, QString("Kell's Reach"));
        QCOMPARE(QPointF(points.at(2).x, points.at(2).y), QPointF(-7000.5, 1200));
        QCOMPARE(points.at(1).y, -450.25);
        QCOMPARE(QPointF(points.at(0).x, points.at(0).y), QPointF(0, 0));
        QCOMPARE(PointBounds(points), QRectF(-7000.5, -450.25, 7300.5, 1650.25));
        QVERIFY(PointBounds({}).isNull() && LoadSector("Atlantis").isEmpty());
        QString error;
        QVERIFY2(
            f.exec({"DELETE FROM SECTORS WHERE SYSTEM_SYSTEM_NAME IS NULL OR SYSTEM_SYSTEM_NAME = 'Gone'"},
                   &error),
            qPrintable(error));
        QCOMPARE(MapSystems(), (QStringList{"Aldra", "Veyl"}));
    }

    void whatIsAtAPoint() {
        const PointDetails gate = ReadPointDetails("Kell's Reach", "old gate");
        QVERIFY(gate.stations.isEmpty()); // the station of that name is in another sector
        QCOMPARE(gate.spawns.size(), 2);
        QCOMPARE(gate.spawns.at(0).mob + "/" + gate.spawns.at(0).rate + "," + gate.spawns.at(1).mob + "/" +
                     gate.spawns.at(1).rate,
                 QString("Iron Maw/,Rust Eater/Fast"));
        const PointDetails rest = ReadPointDetails("Kell's Reach", "Dunmore's Rest");
        QVERIFY(rest.stations == QStringList{"Dunmore's Rest"} && rest.spawns.isEmpty());
        const QString html = PointDetailsHtml(point("Old Gate"), gate);
        for (const char* part : {"<b>Old Gate</b>", "Gate<br>", "X -7000.5, Y 1200",
                                 "Watch the &lt;b&gt;rocks&lt;/b&gt;<br>and the drones.",
                                 "Iron Maw &ndash; rate unknown", "Rust Eater &ndash; Fast"})
            QVERIFY2(html.contains(QLatin1String(part)), part);
        QVERIFY(!html.contains("<a "));
        const QString restHtml = PointDetailsHtml(point("Dunmore's Rest"), rest, true);
        QVERIFY(restHtml.contains("Station: <a href=\"station:Dunmore%27s%20Rest\">Dunmore&#39;s Rest</a>") ||
                restHtml.contains("Station: <a href=\"station:Dunmore%27s%20Rest\">Dunmore's Rest</a>"));
        QVERIFY(restHtml.contains("No MOBs spawn here."));
        // The links lead back to their records, whatever the names hold.
        PointDetails odd;
        odd.spawns << Spawn{"Rust & Ruin: 50% <Elite>", "Fast"};
        const QString linked = PointDetailsHtml(NavPoint(), odd, true);
        const int at = int(linked.indexOf("href=\"")) + 6;
        QString k, n;
        QVERIFY(ParseDetailsLink(linked.mid(at, linked.indexOf('"', at) - at), &k, &n));
        QCOMPARE(k + "/" + n, QString("mob/Rust & Ruin: 50% <Elite>"));
        QVERIFY(!ParseDetailsLink("http://example.com", &k, &n) && !ParseDetailsLink("mob:", &k, &n));
    }

    void coordinates() {
        const QList<std::pair<QString, double>> good = {
            {"  -340.5 ", -340.5}, {"-0", 0}, {"1000000000", 1e9}};
        for (const auto& [text, value] : good) {
            double v = 1;
            QVERIFY(ParseCoordinate(text, &v));
            QCOMPARE(v, value);
            QVERIFY(!std::signbit(v) || v != 0);
        }
        double v = 0;
        for (const QString bad : {"-1000000001", "east", "nan"})
            QVERIFY2(!ParseCoordinate(bad, &v), qPrintable(bad));
    }

    void refusals_data() {
        QTest::addColumn<QStringList>("input"); // sector, name, type, x, y
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        const QString coordinate =
            "coordinate must be a number between -1000000000 and 1000000000, such as 1250 or -340.5.";
        QTest::newRow("no sector") << QStringList{"", "Beacon", "Gate", "1", "2"} << "No Sector"
                                   << "Please choose a sector first.";
        QTest::newRow("no name") << QStringList{"Aldra Prime", "   ", "Gate", "1", "2"} << "Missing Name"
                                 << "Please enter a name for the location.";
        QTest::newRow("two quotes together")
            << QStringList{"Aldra Prime", "Kell''s Gate", "Gate", "1", "2"} << "Invalid name"
            << "Names cannot contain a double single-quote! Please change name to continue.";
        QTest::newRow("no type") << QStringList{"Aldra Prime", "Beacon", "", "1", "2"} << "Missing Type"
                                 << "Please choose the type of the location.";
        QTest::newRow("x not a number")
            << QStringList{"Aldra Prime", "Beacon", "Gate", "12a", "2"} << "Invalid Coordinate"
            << "The X " + coordinate;
        QTest::newRow("y missing") << QStringList{"Aldra Prime", "Beacon", "Gate", "1", ""}
                                   << "Invalid Coordinate"
                                   << "The Y " + coordinate;
    }
    void refusals() {
        QFETCH(QStringList, input);
        QFETCH(QString, title);
        QFETCH(QString, text);
        NavPoint out;
        out.name = "untouched";
        QVERIFY(!CheckLocation({input[0], input[1], input[2], input[3], input[4], QString()}, &out));
        QCOMPARE(out.name, QString("untouched"));
        QCOMPARE(f.prompt().count(), 1);
        checkPrompt(title, text);
    }

    void addWritesTheLocationOnce() {
        NavPoint p;
        QVERIFY(CheckLocation(
            {"Kell's Reach", "  O'Hara Beacon ", "Navigation Point", "0.1", "-2500", "  Near the gate.  "},
            &p));
        QCOMPARE(f.prompt().count(), 0);
        AddLocation(p);
        QVERIFY(!db().inTransaction());
        const NavPoint back = point("O'Hara Beacon");
        QCOMPARE(back.type + "|" + back.comments, QString("Navigation Point|Near the gate."));
        QCOMPARE(QPointF(back.x, back.y), QPointF(0.1, -2500));
        // No comments is NULL, not an empty text.
        QVERIFY(CheckLocation({"Kell's Reach", "Quiet Drift", "Weft", "1", "1", "   "}, &p));
        AddLocation(p);
        QCOMPARE(count("NAV_POINTS WHERE NAV_POINT_NAME = 'Quiet Drift' AND COMMENTS IS NULL"), 1);
        // Names are unique within a sector whatever their case; the same name in another sector is fine.
        QVERIFY(CheckLocation({"Kell's Reach", "OLD GATE", "Gate", "1", "1", ""}, &p));
        const int before = count("NAV_POINTS");
        try {
            AddLocation(p);
            QFAIL("a second Old Gate was written");
        } catch (const VbError&) {
            QCOMPARE(classifyError(db().errors().value(0)), DBErrorKind::Duplicate);
        }
        QVERIFY(!db().inTransaction());
        QCOMPARE(count("NAV_POINTS"), before);
        QVERIFY(CheckLocation({"Aldra Drift", "Old Gate", "Gate", "1", "1", ""}, &p));
        AddLocation(p);
        QCOMPARE(count("NAV_POINTS"), before + 1);
    }

    void updateWritesWhatChangedAndCarriesTheName() {
        const NavPoint before = point("Old Gate");
        NavPoint after = before;
        QCOMPARE(UpdateLocation(before, after), SaveResult::NothingChanged);
        QVERIFY(!db().inTransaction());
        after.name = "Kell's Old Gate";
        after.x = 12;
        after.comments.clear();
        QCOMPARE(UpdateLocation(before, after), SaveResult::Saved);
        QVERIFY(!db().inTransaction());
        const NavPoint now = point("Kell's Old Gate");
        QCOMPARE(QPointF(now.x, now.y), QPointF(12, 1200));
        QVERIFY(now.type == "Gate" && now.comments.isEmpty());
        // The MOBs that spawned at the old name spawn at the new one; the other sector's Old Gate keeps its
        // own.
        QCOMPARE(
            count("MOBS_LOCATION WHERE SECTOR_NAME = 'Kell''s Reach' AND NAV_POINT = 'Kell''s Old Gate'"), 2);
        QCOMPARE(count("MOBS_LOCATION WHERE SECTOR_NAME = 'Aldra Prime' AND NAV_POINT = 'Old Gate'"), 1);
        QCOMPARE(count("NAV_POINTS WHERE SECTOR_NAME = 'Aldra Prime' AND NAV_POINT_NAME = 'Old Gate'"), 1);
    }

    void aFailedUpdateChangesNothing() {
        // The spawn locations refuse the new name half way through: the renamed point goes back too.
        QCOMPARE(sqlite3_exec(db().handle(),
                              "CREATE TRIGGER NO_RENAME BEFORE UPDATE ON MOBS_LOCATION BEGIN "
                              "SELECT RAISE(ABORT, 'spawn locations are locked'); END",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        const NavPoint before = point("Old Gate");
        NavPoint after = before;
        after.name = "New Gate";
        after.y = -1;
        QVERIFY_THROWS_EXCEPTION(VbError, UpdateLocation(before, after));
        QVERIFY(!db().inTransaction());
        QCOMPARE(point("Old Gate").y, 1200.0);
        QCOMPARE(point("New Gate").name, QString());
        // Renaming onto a taken name fails at once, also leaving everything as it was.
        after = point("Dunmore's Rest");
        after.name = "old gate";
        QVERIFY_THROWS_EXCEPTION(VbError, UpdateLocation(point("Dunmore's Rest"), after));
        QVERIFY(!db().inTransaction());
        QCOMPARE(count("NAV_POINTS WHERE SECTOR_NAME = 'Kell''s Reach'"), 3);
    }

    void deleting() {
        QVERIFY(!DeleteLocation("Kell's Reach", "Old Gate")); // refused where MOBs spawn
        checkPrompt("Location In Use",
                    "'Old Gate' cannot be deleted while MOBs spawn there: Iron Maw, Rust Eater.\r\n"
                    "Remove those spawn locations from the MOBs first.");
        QCOMPARE(count("NAV_POINTS WHERE NAV_POINT_NAME = 'Old Gate'"), 2);
        QCOMPARE(MobsSpawningAt("Aldra Prime", "Old Gate"), QStringList{"Pale Leech"});
        f.prompt().queueButton(vb::No); // asked first
        QVERIFY(!DeleteLocation("Kell's Reach", "Dunmore's Rest"));
        QCOMPARE(f.prompt().last().text, QString("Are you sure you want to delete 'Dunmore's Rest' ?"));
        QCOMPARE(f.prompt().last().style, int(vb::YesNo + vb::Question));
        QCOMPARE(count("NAV_POINTS WHERE SECTOR_NAME = 'Kell''s Reach'"), 3);
        f.prompt().queueButton(vb::Yes);
        QVERIFY(DeleteLocation("Kell's Reach", "Dunmore's Rest"));
        QVERIFY(!db().inTransaction());
        QCOMPARE(count("NAV_POINTS WHERE SECTOR_NAME = 'Kell''s Reach'"), 2);
        // The station of that name is a record of its own and stays.
        QCOMPARE(count("STATIONS WHERE STATION_NAME = 'Dunmore''s Rest'"), 1);
        QVERIFY(!DeleteLocation("Kell's Reach", "Dunmore's Rest", false));
        QCOMPARE(f.prompt().last().title, QString("Location Not Found"));
        QVERIFY(!db().inTransaction());
    }
};

QTEST_GUILESS_MAIN(TestLocations)
#include "tst_locations.moc"
