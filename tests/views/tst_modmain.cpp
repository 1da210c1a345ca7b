// The shared view texts: captions, tooltips, price words, node texts back to names, the null-safe
// readers and the specials tree texts.
#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "core/vberror.h"
#include "views/modmain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestModMain : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void formatFieldName_data();
    void formatFieldName();
    void priceText_data();
    void priceText();
    void formatWhole_data();
    void formatWhole();
    void removeExtra_data();
    void removeExtra();
    void specialText_data();
    void specialText();
    void specialDetail_data();
    void specialDetail();
    void nzReaders();
    void toolTip_data();
    void toolTip();

private:
    QTemporaryDir m_dir;
};

void TestModMain::initTestCase() {
    QVERIFY(m_dir.isValid());
    // Keep the user's own settings out of it.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_dir.filePath("config")));
    setProgramFolder(m_dir.path());
    QFile ini(m_dir.filePath("VOSK.ini"));
    QVERIFY(ini.open(QIODevice::WriteOnly));
    ini.write("[BEAM]\nDAMAGE=Damage of one ### shot\n"
              "[VIEW_EQUIPMENT]\nSRP=Suggested price with %%% markup\\nper unit\nPLAIN=No marks here\n");
    ini.close();
    CustomFields cf;
    cf.on = true;
    cf.caption[0] = "Faction";
    cf.caption[1] = "my_note";
    cf.caption[2] = "";
    setCustomFields(cf);
}

void TestModMain::formatFieldName_data() {
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("caption");
    QTest::newRow("lvl") << "LVL" << "Level";
    QTest::newRow("one word") << "RANGE" << "Range";
    QTest::newRow("computed") << "DAMAGE_PER_SECOND" << "Damage Per Second";
    QTest::newRow("unique") << "UNIQUE_FLAG" << "Unique";
    QTest::newRow("amount keeps AMO") << "AMOUNT" << "Amount";
    // AMO becomes "Ammunition_", so the underscore that followed it makes a second blank.
    QTest::newRow("amo type") << "AMO_TYPE" << "Ammunition  Type";
    QTest::newRow("amo type amo") << "AMO_TYPE_AMO" << "Ammunition  Type";
    QTest::newRow("ammo range") << "AMMO_RANGE" << "Ammo Range";
    QTest::newRow("stack size") << "STACK_SIZE" << "Stack Size";
    QTest::newRow("mixed case in") << "energy_USE" << "Energy Use";
    QTest::newRow("custom 1") << "CUSTOM_01" << "Faction";
    QTest::newRow("custom 2 caption formatted") << "CUSTOM_02" << "My Note";
    QTest::newRow("custom 3 empty") << "CUSTOM_03" << "";
}

void TestModMain::formatFieldName() {
    QFETCH(QString, column);
    QFETCH(QString, caption);
    QCOMPARE(FormatFieldName(column), caption);
}

void TestModMain::priceText_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("fee");
    QTest::addColumn<QString>("text");
    QTest::newRow("-2 price") << "-2" << false << "Mission Reward";
    QTest::newRow("-1 price") << "-1" << false << "Loot Only";
    QTest::newRow("0 price") << "0" << false << "Unknown";
    QTest::newRow("-3 price as given") << "-3" << false << "-3";
    QTest::newRow("grouped price") << "1,250,000" << false << "1,250,000";
    QTest::newRow("-1 fee") << "-1" << true << "Not Manufacturable";
    QTest::newRow("-5 fee") << "-5" << true << "Not Manufacturable";
    QTest::newRow("-2 fee") << "-2" << true << "Not Manufacturable";
    QTest::newRow("0 fee") << "0" << true << "Unknown";
    QTest::newRow("fee as given") << "12,000" << true << "12,000";
    QTest::newRow("words as given") << "TBA" << false << "TBA";
}

void TestModMain::priceText() {
    QFETCH(QString, value);
    QFETCH(bool, fee);
    QFETCH(QString, text);
    QCOMPARE(PriceText(value, fee), text);
}

void TestModMain::formatWhole_data() {
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << qint64(0) << "0";
    QTest::newRow("999") << qint64(999) << "999";
    QTest::newRow("1000") << qint64(1000) << "1,000";
    QTest::newRow("million") << qint64(1234567) << "1,234,567";
    QTest::newRow("-1") << qint64(-1) << "-1";
    QTest::newRow("-1234") << qint64(-1234) << "-1,234";
}

void TestModMain::formatWhole() {
    QFETCH(qint64, value);
    QFETCH(QString, text);
    QCOMPARE(FormatWhole(value), text);
}

void TestModMain::removeExtra_data() {
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("name");
    QTest::newRow("level") << "Ion Coil (L12)" << "Ion Coil";
    QTest::newRow("level and amount") << "Ion Coil (L12) x3" << "Ion Coil";
    QTest::newRow("equipment child") << "Ion Beam (L4 Beam) x2" << "Ion Beam";
    // An upgrade source keeps its level bracket: it does not resolve to a record.
    QTest::newRow("upgrade") << "Ion Beam (L4 Beam) (Upgrade)" << "Ion Beam (L4 Beam)";
    QTest::newRow("amount marker") << "Ore [Amt: 5]" << "Ore";
    QTest::newRow("bracket first only") << "(Odd)" << "(Odd)";
    QTest::newRow("plain") << "Hunter's Lance" << "Hunter's Lance";
}

void TestModMain::removeExtra() {
    QFETCH(QString, node);
    QFETCH(QString, name);
    QCOMPARE(RemoveExtra(node), name);
}

void TestModMain::specialText_data() {
    QTest::addColumn<QString>("special");
    QTest::addColumn<QVariant>("amount");
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("text");
    QTest::newRow("percent") << "Shield Boost" << QVariant(12.345) << "%" << "Shield Boost +12.35%";
    QTest::newRow("negative points") << "Drain" << QVariant(-3) << "points" << "Drain -3 Points";
    QTest::newRow("zero") << "Cloak" << QVariant(0) << "%" << "Cloak";
    QTest::newRow("null amount") << "Cloak" << QVariant() << "points" << "Cloak";
    QTest::newRow("words units") << "Warp" << QVariant(2.5) << "light years" << "Warp +2.5 Light Years";
    QTest::newRow("negative fraction") << "Leak" << QVariant(-0.125) << "%" << "Leak -0.13%";
}

void TestModMain::specialText() {
    QFETCH(QString, special);
    QFETCH(QVariant, amount);
    QFETCH(QString, units);
    QFETCH(QString, text);
    QCOMPARE(SpecialText(special, amount, units), text);
}

void TestModMain::specialDetail_data() {
    QTest::addColumn<QString>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("energy") << "ENERGY_USE" << QVariant(5) << "Energy Use: 5";
    QTest::newRow("fraction") << "DURATION" << QVariant(1.5) << "Duration: 1.5";
    QTest::newRow("zero shunt") << "SHUNT" << QVariant(0) << "";
    QTest::newRow("null shunt") << "SHUNT" << QVariant() << "";
    QTest::newRow("negative range") << "RANGE" << QVariant(-4) << "";
}

void TestModMain::specialDetail() {
    QFETCH(QString, column);
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(SpecialDetailText(column, value), text);
}

void TestModMain::nzReaders() {
    QCOMPARE(NzString(QVariant()), QString());
    QCOMPARE(NzString(QVariant(), "x"), QString("x"));
    QCOMPARE(NzString(QVariant(2.0)), QString("2"));
    QCOMPARE(NzString(QVariant(12.5)), QString("12.5"));
    QCOMPARE(NzLong(QVariant()), 0);
    QCOMPARE(NzLong(QVariant(7.6)), 8);
    QCOMPARE(NzLong(QVariant("1,200")), 1200);
    QCOMPARE(NzDouble(QVariant(), 3.5), 3.5);
    QCOMPARE(NzDouble(QVariant("2.25")), 2.25);
    QCOMPARE(NzBool(QVariant()), false);
    QCOMPARE(NzBool(QVariant(1)), true);
    QCOMPARE(NzBool(QVariant(-1)), true);
    QCOMPARE(NzBool(QVariant(0)), false);
    QCOMPARE(NzBool(QVariant("True")), true);
    QCOMPARE(NzBool(QVariant("False")), false);
    bool threw = false;
    try {
        NzLong(QVariant("lots"));
    } catch (const VbError& e) {
        threw = e.number == 13;
    }
    QVERIFY2(threw, "a text that is no number is a type mismatch");
    threw = false;
    try {
        NzLong(QVariant(3e10));
    } catch (const VbError& e) {
        threw = e.number == 6;
    }
    QVERIFY2(threw, "a number beyond 32 bits overflows");
}

void TestModMain::toolTip_data() {
    QTest::addColumn<QString>("markup");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tip");
    QTest::newRow("name without underscores") << "1" << "beam" << "DAMAGE" << "Heavy_Beam"
                                              << "Damage of one HeavyBeam shot";
    QTest::newRow("markup and line end") << "1.155" << "VIEW_EQUIPMENT" << "SRP" << ""
                                         << "Suggested price with 15.5% markup\r\nper unit";
    QTest::newRow("no markup") << "1" << "VIEW_EQUIPMENT" << "SRP" << ""
                               << "Suggested price with 0% markup\r\nper unit";
    QTest::newRow("plain") << "1" << "VIEW_EQUIPMENT" << "PLAIN" << "x" << "No marks here";
    QTest::newRow("missing key") << "1" << "VIEW_EQUIPMENT" << "NOPE" << "x" << "";
}

void TestModMain::toolTip() {
    QFETCH(QString, markup);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, name);
    QFETCH(QString, tip);
    opt::save(opt::Markup, markup);
    QCOMPARE(GetToolTip(section, key, name), tip);
}

QTEST_GUILESS_MAIN(TestModMain)
#include "tst_modmain.moc"
