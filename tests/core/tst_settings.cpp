// The options table and the settings store, on the isolated store every test folder uses.
#include "core/settings.h"
#include "isolatedsettings.h"

#include <QSettings>
#include <QTest>

class TestSettings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { m_store.clear(); }

    // An option reads its default until saved, and again once its setting is deleted.
    void optionsReadTheirDefaultsUntilSaved() {
        const opt::Option o{"PreloadImages", "False"};
        QCOMPARE(opt::text(o), QStringLiteral("False"));
        QCOMPARE(GetSetting("Options", o.key, "none"), QStringLiteral("none")); // nothing stored yet
        opt::save(o, "7");
        QCOMPARE(GetSetting("Options", o.key), QStringLiteral("7"));
        QCOMPARE(opt::number(o), 7L);
        DeleteSetting("Options", o.key);
        QCOMPARE(opt::text(o), QStringLiteral("False"));
    }

    void flagsAreKeptAsTrueAndFalse_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("flag");
        for (const auto& [stored, flag] : {std::pair{"True", true},
                                           {"tRUE", true},
                                           {"1", true},
                                           {"-1", true},
                                           {"False", false},
                                           {"Yes", false},
                                           {"", false}})
            QTest::newRow(*stored ? stored : "empty") << QString(stored) << flag;
    }

    void flagsAreKeptAsTrueAndFalse() {
        QFETCH(QString, stored);
        QFETCH(bool, flag);
        QCOMPARE(textBool(stored), flag);
        SaveSetting("Options", opt::Tooltips.key, stored);
        QCOMPARE(opt::flag(opt::Tooltips), flag);
        opt::saveFlag(opt::Tooltips, flag);
        QCOMPARE(GetSetting("Options", opt::Tooltips.key),
                 flag ? QStringLiteral("True") : QStringLiteral("False"));
    }

    // Everything written lands in the isolated folder, and clearing it forgets every value.
    void storeStaysInItsFolder() {
        SaveSetting("Settings", "Data", "Components");
        QVERIFY(DeleteAllSettings());
        QCOMPARE(GetSetting("Settings", "Data", "none"), QStringLiteral("none"));
        SaveSetting("Settings", "Data", "Items");
        QSettings store(QSettings::NativeFormat, QSettings::UserScope, "VOSK", "VOSK");
        store.sync();
        QVERIFY2(store.fileName().startsWith(m_store.path()), qPrintable(store.fileName()));
        m_store.clear();
        QCOMPARE(GetSetting("Settings", "Data", "none"), QStringLiteral("none"));
    }

private:
    IsolatedSettings m_store;
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
