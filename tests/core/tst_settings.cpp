// The options table and the settings store, on the isolated store every test folder uses.
#include "core/settings.h"
#include "isolatedsettings.h"

#include <QDirIterator>
#include <QSettings>
#include <QTest>

class TestSettings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { m_store.clear(); }

    void optionsReadTheirDefaultsUntilSaved_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("defaultText");
        for (const opt::Option& o : {opt::Tooltips, opt::ReportErrorMessages, opt::DoubleClickEvent,
                                     opt::DisplayVLNCursor, opt::VLInteractOn, opt::VLPath,
                                     opt::PreloadImages, opt::PrintPreview, opt::Background, opt::Markup})
            QTest::newRow(o.key) << QString::fromLatin1(o.key) << QString::fromLatin1(o.defaultValue);
    }

    void optionsReadTheirDefaultsUntilSaved() {
        QFETCH(QString, key);
        QFETCH(QString, defaultText);
        const QByteArray k = key.toLatin1(), d = defaultText.toLatin1();
        const opt::Option o{k.constData(), d.constData()};
        QCOMPARE(opt::text(o), defaultText);
        QCOMPARE(GetSetting("Options", key, "none"), QStringLiteral("none")); // nothing stored yet
        opt::save(o, "7");
        QCOMPARE(GetSetting("Options", key), QStringLiteral("7"));
        QCOMPARE(opt::number(o), 7L);
        DeleteSetting("Options", key);
        QCOMPARE(opt::text(o), defaultText);
    }

    void flagsAreKeptAsTrueAndFalse_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("flag");
        QTest::newRow("True") << "True" << true;
        QTest::newRow("any case") << "tRUE" << true;
        QTest::newRow("1") << "1" << true;
        QTest::newRow("-1, the old true") << "-1" << true;
        QTest::newRow("False") << "False" << false;
        QTest::newRow("Yes is not a flag") << "Yes" << false;
        QTest::newRow("empty") << "" << false;
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
