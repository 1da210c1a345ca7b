#include "mainwindow_fixture.h"

#include "core/programfolder.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"

#include <QDir>
#include <QFile>
#include <QSettings>

bool MainWindowFixture::setUp(QString* error) {
    m_dir = std::make_unique<QTemporaryDir>();
    if (!m_dir->isValid()) {
        *error = QStringLiteral("no temporary folder");
        return false;
    }
    const QString dir = m_dir->path();
    // The settings store of this run lives in the temporary folder, never in the user's own.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, dir + QStringLiteral("/settings"));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir + QStringLiteral("/settings"));
    setProgramFolder(dir);
    DeleteAllSettings();

    QFile ini(dir + QStringLiteral("/VOSK.ini"));
    if (!ini.open(QIODevice::WriteOnly))
        return false;
    ini.write("[Main]\nDATA=Pick a category\nRACE=Pick a class\n"
              "[COLORS]\nUPDATED=255\nPERSONAL=65280\n"
              "[FORUM]\nURL=https://forum.example.org/vosk\n[ZEL]\nURL=https://vosk.example.org/\n");
    ini.close();
#ifdef VOSK_IMAGES_DIR
    QFile::link(QStringLiteral(VOSK_IMAGES_DIR), dir + QStringLiteral("/images"));
#endif

    const QString path = databasePath();
    if (!CreateDatabase(path, error) || !FillSampleData(path, error))
        return false;
    try {
        db().open(QStringLiteral("Provider=VOSK.SQLite;Data Source=") + path + QLatin1Char(';'));
    } catch (const VbError& e) {
        *error = e.description;
        return false;
    }
    m_prompt = std::make_unique<ScriptedPrompt>();
    return true;
}

void MainWindowFixture::tearDown() {
    db().close();
    m_prompt.reset();
    m_dir.reset();
}

QVariant MainWindowFixture::scalar(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return rs.eof() ? QVariant() : rs.value(0);
}

long MainWindowFixture::count(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    long n = 0;
    for (; !rs.eof(); rs.moveNext())
        ++n;
    return n;
}

QStringList MainWindowFixture::errorLog() const {
    QFile f(errorLogPath());
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
