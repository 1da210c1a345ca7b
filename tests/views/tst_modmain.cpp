// The shared view texts: captions, price words, whole numbers, node texts back to names, the specials
// tree texts, tooltips, and the null-safe readers.
#include "core/inifile.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "core/vberror.h"
#include "views/modmain.h"
#include "viewsfixture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

namespace {
long errorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const VbError& e) {
        return e.number;
    }
    return 0;
}
} // namespace

class TestModMain : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        IsolateSettings(m_dir.path());
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
        setCustomFields(cf);
    }

    void texts_data() {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("field computed") << "field"
                                        << "DAMAGE_PER_SECOND" << QVariant() << "Damage Per Second";
        QTest::newRow("field unique") << "field"
                                      << "UNIQUE_FLAG" << QVariant() << "Unique";
        // AMO becomes "Ammunition_", so the underscore that followed it makes a second blank.
        QTest::newRow("field amo type") << "field"
                                        << "AMO_TYPE" << QVariant() << "Ammunition  Type";
        QTest::newRow("field ammo range") << "field"
                                          << "AMMO_RANGE" << QVariant() << "Ammo Range";
        QTest::newRow("field mixed case") << "field"
                                          << "energy_USE" << QVariant() << "Energy Use";
        QTest::newRow("field custom 1") << "field"
                                        << "CUSTOM_01" << QVariant() << "Faction";
        QTest::newRow("field custom caption") << "field"
                                              << "CUSTOM_02" << QVariant() << "My Note";
        QTest::newRow("price -2") << "price"
                                  << "-2" << QVariant() << "Mission Reward";
        QTest::newRow("price -1") << "price"
                                  << "-1" << QVariant() << "Loot Only";
        QTest::newRow("price 0") << "price"
                                 << "0" << QVariant() << "Unknown";
        QTest::newRow("price as given") << "price"
                                        << "1,250,000" << QVariant() << "1,250,000";
        QTest::newRow("fee -1") << "fee"
                                << "-1" << QVariant() << "Not Manufacturable";
        QTest::newRow("fee -5") << "fee"
                                << "-5" << QVariant() << "Not Manufacturable";
        QTest::newRow("fee 0") << "fee"
                               << "0" << QVariant() << "Unknown";
        QTest::newRow("whole 999") << "whole"
                                   << "" << QVariant(999) << "999";
        QTest::newRow("whole million") << "whole"
                                       << "" << QVariant(1234567) << "1,234,567";
        QTest::newRow("whole negative") << "whole"
                                        << "" << QVariant(-1234) << "-1,234";
        QTest::newRow("node level and amount") << "node"
                                               << "Ion Coil (L12) x3" << QVariant() << "Ion Coil";
        QTest::newRow("node equipment") << "node"
                                        << "Ion Beam (L4 Beam) x2" << QVariant() << "Ion Beam";
        // An upgrade source keeps its level bracket: it does not resolve to a record.
        QTest::newRow("node upgrade") << "node"
                                      << "Ion Beam (L4 Beam) (Upgrade)" << QVariant() << "Ion Beam (L4 Beam)";
        QTest::newRow("node bracket first") << "node"
                                            << "(Odd)" << QVariant() << "(Odd)";
        QTest::newRow("special percent") << "special|%"
                                         << "Shield Boost" << QVariant(12.345) << "Shield Boost +12.35%";
        QTest::newRow("special points") << "special|points"
                                        << "Drain" << QVariant(-3) << "Drain -3 Points";
        QTest::newRow("special zero") << "special|%"
                                      << "Cloak" << QVariant(0) << "Cloak";
        QTest::newRow("special words") << "special|light years"
                                       << "Warp" << QVariant(2.5) << "Warp +2.5 Light Years";
        QTest::newRow("detail") << "detail"
                                << "ENERGY_USE" << QVariant(5) << "Energy Use: 5";
        QTest::newRow("detail zero") << "detail"
                                     << "SHUNT" << QVariant(0) << "";
        QTest::newRow("detail null") << "detail"
                                     << "SHUNT" << QVariant() << "";
    }
    void texts() {
        QFETCH(QString, what);
        QFETCH(QString, text);
        QFETCH(QVariant, value);
        QFETCH(QString, expected);
        QString actual;
        if (what == "field")
            actual = FormatFieldName(text);
        else if (what == "price" || what == "fee")
            actual = PriceText(text, what == "fee");
        else if (what == "whole")
            actual = FormatWhole(value.toLongLong());
        else if (what == "node")
            actual = RemoveExtra(text);
        else if (what == "detail")
            actual = SpecialDetailText(text, value);
        else
            actual = SpecialText(text, value, what.section('|', 1));
        QCOMPARE(actual, expected);
    }

    void toolTip_data() {
        QTest::addColumn<QString>("markup");
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("tip");
        QTest::newRow("name without underscores") << "1"
                                                  << "beam"
                                                  << "DAMAGE"
                                                  << "Heavy_Beam"
                                                  << "Damage of one HeavyBeam shot";
        QTest::newRow("markup and line end") << "1.155"
                                             << "VIEW_EQUIPMENT"
                                             << "SRP"
                                             << ""
                                             << "Suggested price with 15.5% markup\r\nper unit";
        QTest::newRow("plain") << "1"
                               << "VIEW_EQUIPMENT"
                               << "PLAIN"
                               << "x"
                               << "No marks here";
        QTest::newRow("missing key") << "1"
                                     << "VIEW_EQUIPMENT"
                                     << "NOPE"
                                     << "x"
                                     << "";
    }
    void toolTip() {
        QFETCH(QString, markup);
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, name);
        QFETCH(QString, tip);
        opt::save(opt::Markup, markup);
        QCOMPARE(GetToolTip(section, key, name), tip);
    }

    void nzReaders() {
        QCOMPARE(NzString(QVariant()), QString());
        QCOMPARE(NzString(QVariant(2.0)), QString("2"));
        QCOMPARE(NzLong(QVariant(7.6)), 8);
        QCOMPARE(NzLong(QVariant("1,200")), 1200);
        QCOMPARE(NzDouble(QVariant(), 3.5), 3.5);
        QCOMPARE(NzBool(QVariant()), false);
        QCOMPARE(NzBool(QVariant(-1)), true);
        QCOMPARE(NzBool(QVariant("False")), false);
        QCOMPARE(errorOf([] { NzLong(QVariant("lots")); }), 13L); // type mismatch
        QCOMPARE(errorOf([] { NzLong(QVariant(3e10)); }), 6L);    // overflow
    }
};

QTEST_GUILESS_MAIN(TestModMain)
#include "tst_modmain.moc"
