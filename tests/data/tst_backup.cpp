// Backup and restore: the dialogs and questions, a consistent copy while the file is in use, the
// files a restore refuses (and leaves alone), and the old database kept whenever a restore fails.
#include "core/clock.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "data/backup.h"
#include "enginedb.h"
#include "isolatedsettings.h"

#include <QDir>
#include <QTest>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

using enginedb::connectionFor;

long count(const QString& sql) {
    return enginedb::count(sql, db());
}

bool rawExec(const QString& path, const QString& sql) {
    sqlite3* h = nullptr;
    bool ok = sqlite3_open_v2(QFile::encodeName(path).constData(), &h, SQLITE_OPEN_READWRITE, nullptr) ==
                  SQLITE_OK &&
              RegisterSqlFunctions(h) &&
              sqlite3_exec(h, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(h);
    return ok;
}

QByteArray bytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeBytes(const QString& path, const QByteArray& data) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(data) == data.size();
}

} // namespace

class TestBackup : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_template.isValid());
        QString error;
        m_blank = m_template.filePath("blank.vosk");
        QVERIFY2(CreateDatabase(m_blank, &error), qPrintable(error));
        // Enough rows for several pages, so that a damaged page is found by the integrity check.
        QString rows = "BEGIN;";
        for (int i = 0; i < 400; ++i)
            rows += QString("INSERT INTO ITEMS (ITEM_NAME, LVL, COMMENTS) VALUES ('Item %1', %1, '%2');")
                        .arg(i)
                        .arg(QString(60, QChar('x')));
        QVERIFY(rawExec(m_blank, rows + "COMMIT;"));
    }
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_settings.clear();
        setProgramFolder(m_dir->path());
        QVERIFY(QFile::copy(m_blank, databasePath()));
        db().open(connectionFor(databasePath()));
        db().execute("INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('Marker', 1)");
        m_prompt = std::make_unique<ScriptedPrompt>();
        setClock([] { return QDateTime(QDate(2031, 5, 6), QTime(7, 8, 9)); });
    }
    void cleanup() {
        setClock({});
        setRestoreCopier({});
        db().close();
        m_prompt.reset();
        m_dir.reset();
    }

    void backupCommand_data() {
        QTest::addColumn<QString>("existing");   // "" none, else the old file's text
        QTest::addColumn<QList<int>>("answers"); // to "already exists": Yes, or No and then cancel
        QTest::newRow("new file") << "" << QList<int>{};
        QTest::newRow("existing, replaced") << "old backup" << QList<int>{vb::Yes};
        QTest::newRow("existing, kept: the dialog comes back") << "old backup" << QList<int>{vb::No};
    }
    void backupCommand() {
        QFETCH(QString, existing);
        QFETCH(QList<int>, answers);
        const QString target = m_dir->filePath("mine.bak");
        if (!existing.isEmpty())
            QVERIFY(writeBytes(target, existing.toLatin1()));
        m_prompt->queueText(target);
        for (int a : answers)
            m_prompt->queueButton(a);
        const bool kept = answers.value(0) == vb::No;
        QCOMPARE(BackupDatabaseCommand(), !kept);

        const auto& calls = m_prompt->calls();
        QCOMPARE(calls.first().kind, ScriptedPrompt::Kind::SaveFile);
        QCOMPARE(calls.first().title, QString("Backup Files|*.bak"));
        QCOMPARE(calls.first().extra, QString("06052031.bak"));
        if (!existing.isEmpty()) {
            QCOMPARE(calls.at(1).kind, ScriptedPrompt::Kind::MsgBox);
            QCOMPARE(calls.at(1).text,
                     QDir::toNativeSeparators(target) + " already exists.\r\nDo you want to replace it?");
            QCOMPARE(calls.at(1).title, QString("Confirm Save As"));
            QCOMPARE(calls.at(1).style, vb::YesNo + vb::Exclamation);
        }
        QCOMPARE(m_prompt->count(), existing.isEmpty() ? 1 : kept ? 3 : 2);
        if (kept) { // asked again, then cancelled: the old file is as it was
            QCOMPARE(calls.at(2).kind, ScriptedPrompt::Kind::SaveFile);
            QCOMPARE(bytes(target), existing.toLatin1());
            return;
        }
        QCOMPARE(CheckRestorable(target), QString());
        QVERIFY(db().isOpen());
        QVERIFY(!QFile::exists(target + ".part"));
        QVERIFY(rawExec(target, "DELETE FROM ITEMS WHERE ITEM_NAME = 'Marker'")); // a copy, marker and all
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Marker'"), 1L);
    }

    void cancelledDialogsEndQuietly() {
        QVERIFY(!BackupDatabaseCommand());
        QVERIFY(!RestoreDatabaseCommand());
        QCOMPARE(m_prompt->count(), 2);
        QCOMPARE(m_prompt->last().kind, ScriptedPrompt::Kind::OpenFile);
        QCOMPARE(m_prompt->last().title, QString("Backup Files|*.bak"));
        QCOMPARE(QDir(m_dir->path()).entryList({"*.bak*"}, QDir::Files), QStringList());
    }

    // Another program in the middle of a change does not leak its unfinished rows into the copy.
    void backupIsConsistentWhileTheFileIsInUse() {
        sqlite3* other = nullptr;
        QCOMPARE(sqlite3_open(QFile::encodeName(databasePath()).constData(), &other), SQLITE_OK);
        QVERIFY(RegisterSqlFunctions(other));
        QCOMPARE(sqlite3_exec(other, "BEGIN IMMEDIATE; INSERT INTO ITEMS (ITEM_NAME) VALUES ('Unfinished');",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        const QString target = m_dir->filePath("busy.bak");
        QVERIFY(BackUpDB(target));
        sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(other);
        QCOMPARE(CheckRestorable(target), QString());
        db().close();
        db().open(connectionFor(target));
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Unfinished'"), 0L);
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Marker'"), 1L);
    }

    void backupOverTheDatabaseItselfIsRefused() {
        const QByteArray before = bytes(databasePath());
        QVERIFY(!BackUpDB(QDir::toNativeSeparators(databasePath())));
        QCOMPARE(m_prompt->count(), 1);
        QVERIFY(m_prompt->last().text.contains("over the database itself"));
        QVERIFY(m_prompt->last().text.contains("procedure BackUpDB of Module modMain"));
        QCOMPARE(bytes(databasePath()), before);
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Marker'"), 1L);
    }

    void refusedFiles_data() {
        QTest::addColumn<QString>("make"); // how the chosen file is made
        QTest::addColumn<QString>("reason");
        for (const auto& [make, reason] :
             {std::pair{"none", ""},
              {"empty", "it is empty"},
              {"letter", "it is not a database file"},
              {"DELETE FROM DB_VERSION; INSERT INTO DB_VERSION VALUES (5);",
               "it is a version 5 database; this program reads version 6"},
              {"DROP TABLE MOB_WEAKNESS", "the table MOB_WEAKNESS is missing"},
              {"ALTER TABLE ITEMS DROP COLUMN COMMENTS", "the column COMMENTS of the table ITEMS is missing"},
              {"damaged", "it fails SQLite's integrity check"}})
            QTest::newRow(make) << QString(make) << QString(reason);
    }
    // A refused file names itself and says nothing was changed: the database, the connection and the
    // chosen file are all as they were.
    void refusedFiles() {
        QFETCH(QString, make);
        QFETCH(QString, reason);
        const QString chosen = m_dir->filePath("chosen.bak");
        if (make == "empty")
            QVERIFY(writeBytes(chosen, {}));
        else if (make == "letter")
            QVERIFY(writeBytes(chosen, "Dear pilot, this is not a database.\n"));
        else if (make != "none")
            QVERIFY(QFile::copy(m_blank, chosen));
        if (make.contains(' ')) // a statement that spoils a copy of a good database
            QVERIFY(rawExec(chosen, make));
        if (make == "damaged") {
            QByteArray data = bytes(chosen);
            QVERIFY(data.size() > 8 * 4096);
            // One of the last pages, which hold item rows: only the integrity check reads it.
            const qsizetype page = data.size() - 2 * 4096;
            for (int i = 100; i < 4000; ++i)
                data[page + i] = char(0xA5 ^ i);
            QVERIFY(writeBytes(chosen, data));
        }
        const QByteArray chosenBefore = bytes(chosen);
        const QByteArray databaseBefore = bytes(databasePath());
        const QString connection = db().connectionString();

        QVERIFY(!RestoreDB(chosen));
        QCOMPARE(m_prompt->count(), 1);
        QCOMPARE(m_prompt->last().style, 48);
        if (make == "none") {
            QCOMPARE(m_prompt->last().text, QString("Invalid Filename!"));
            QCOMPARE(m_prompt->last().title, QString("Invalid File Name!"));
        } else {
            const QString text = m_prompt->last().text;
            QVERIFY2(text.startsWith("The file\r\n" + QDir::toNativeSeparators(chosen) +
                                     "\r\ncannot be restored: "),
                     qPrintable(text));
            QVERIFY2(reason.isEmpty() || text.contains(reason), qPrintable(text));
            QVERIFY(text.endsWith("Nothing was changed: your current database is still in place."));
            QCOMPARE(m_prompt->last().title, QString("Restore Database"));
            QCOMPARE(bytes(chosen), chosenBefore);
        }
        QCOMPARE(db().connectionString(), connection);
        QCOMPARE(bytes(databasePath()), databaseBefore);
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Marker'"), 1L);
    }

    // A backup kept read-only restores into a writable database; the safety copy and every
    // temporary file are gone afterwards, and the connection text is the same.
    void readOnlyBackupRestores() {
        const QString backup = m_dir->filePath("old.bak");
        QVERIFY(BackUpDB(backup));
        fs::permissions(backup.toStdString(), fs::perms(0444), fs::perm_options::replace);
        fs::permissions(databasePath().toStdString(), fs::perms(0444), fs::perm_options::replace);
        db().execute("DELETE FROM ITEMS WHERE ITEM_NAME = 'Marker'");
        const QString connection = db().connectionString();
        QVERIFY(RestoreDB(backup));
        QCOMPARE(db().connectionString(), connection);
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Marker'"), 1L);
        db().execute("INSERT INTO ITEMS (ITEM_NAME) VALUES ('Written after')");
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Written after'"), 1L);
        QVERIFY((fs::status(backup.toStdString()).permissions() & fs::perms::owner_write) != fs::perms::none);
        QCOMPARE(QDir(m_dir->path()).entryList({"data.vosk*"}, QDir::Files), QStringList{"data.vosk"});
        QCOMPARE(m_prompt->count(), 0);
    }

    void failedRestoreKeepsTheOldDatabase_data() {
        QTest::addColumn<QString>("copy"); // what the copy into place does
        QTest::newRow("copy fails") << "fail";
        QTest::newRow("copied file cannot be opened") << "garbage";
    }
    void failedRestoreKeepsTheOldDatabase() {
        QFETCH(QString, copy);
        const QString backup = m_dir->filePath("good.bak");
        QVERIFY(BackUpDB(backup));
        db().execute("INSERT INTO ITEMS (ITEM_NAME) VALUES ('Only in the current one')");
        setRestoreCopier([copy](const QString&, const QString& to, QString* error) {
            if (copy == "fail") {
                *error = "the disk is full";
                return false;
            }
            return writeBytes(to, QByteArray("SQLite format 3", 16) + QByteArray(8192, 'z'));
        });
        QVERIFY(!RestoreDB(backup));
        QVERIFY(db().isOpen());
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = 'Only in the current one'"), 1L);
        QCOMPARE(QDir(m_dir->path()).entryList({"data.vosk*"}, QDir::Files), QStringList{"data.vosk"});
        QCOMPARE(m_prompt->count(), 1);
        const QString text = m_prompt->last().text;
        if (copy == "fail") {
            QVERIFY2(text.contains("the disk is full") &&
                         text.contains("procedure RestoreDB of Module modMain"),
                     qPrintable(text));
        } else {
            QVERIFY2(text.startsWith("The restored database could not be opened ("), qPrintable(text));
            QVERIFY(text.endsWith("Your previous database has been put back: nothing was changed."));
            QCOMPARE(m_prompt->last().title, QString("Restore Database"));
        }
    }

private:
    IsolatedSettings m_settings;
    QTemporaryDir m_template;
    QString m_blank;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

QTEST_GUILESS_MAIN(TestBackup)
#include "tst_backup.moc"
