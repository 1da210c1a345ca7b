#pragma once
// A program folder of its own for a test: settings kept in it, a new, empty version-6 database opened
// as the shared connection, and the scripted prompt that records every box.
#include "core/clock.h"
#include "core/programfolder.h"
#include "core/scriptedprompt.h"
#include "data/database.h"
#include "data/schema.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <memory>

class EditorsDb {
public:
    bool setUp(QString* error) {
        m_dir = std::make_unique<QTemporaryDir>();
        if (!m_dir->isValid()) {
            *error = QStringLiteral("no temporary folder");
            return false;
        }
        for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(format, QSettings::UserScope, m_dir->filePath(QStringLiteral("settings")));
        setProgramFolder(m_dir->path());
        // One new database per test run, copied for each test: making one costs a disk flush per table.
        static QTemporaryDir templateDir;
        const QString blank = templateDir.filePath(QStringLiteral("blank.vosk"));
        if (!QFile::exists(blank) && !CreateDatabase(blank, error))
            return false;
        if (!QFile::copy(blank, databasePath())) {
            *error = QStringLiteral("cannot copy the blank database");
            return false;
        }
        try {
            db().open(connection());
        } catch (const VbError& e) {
            *error = e.description;
            return false;
        }
        m_prompt = std::make_unique<ScriptedPrompt>();
        setClock([] { return QDateTime(QDate(2031, 5, 6), QTime(7, 8, 9)); });
        return true;
    }
    void tearDown() {
        setClock({});
        db().close();
        m_prompt.reset();
        m_dir.reset();
    }
    static QString connection() {
        return QStringLiteral("Provider=VOSK.SQLite;Data Source=") + databasePath() + QLatin1Char(';');
    }
    ScriptedPrompt& prompt() { return *m_prompt; }
    QString path() const { return m_dir->path(); }
    // The error log's text (each report adds a line).
    static QString log() {
        QFile f(errorLogPath());
        return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};
