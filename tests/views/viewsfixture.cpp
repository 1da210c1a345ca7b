#include "viewsfixture.h"

#include "core/programfolder.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "data/synthetic.h"
#include "views/modmain.h"

#include <QFile>
#include <QSettings>

void IsolateSettings(const QString& folder) {
    for (auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        QSettings::setPath(format, QSettings::UserScope, folder + QStringLiteral("/settings"));
    DeleteAllSettings();
}

bool ViewsFixture::setUp(bool withSample, QString* error) {
    m_dir = std::make_unique<QTemporaryDir>();
    if (!m_dir->isValid()) {
        *error = QStringLiteral("no temporary folder");
        return false;
    }
    const QString dir = m_dir->path();
    IsolateSettings(dir);
    setProgramFolder(dir);
    QFile::copy(QStringLiteral(VOSK_VIEWS_INI), dir + QStringLiteral("/VOSK.ini"));
#ifdef VOSK_IMAGES_DIR
    QFile::link(QStringLiteral(VOSK_IMAGES_DIR), dir + QStringLiteral("/images"));
#endif
    const QString file = databaseFile();
    if (!CreateDatabase(file, error))
        return false;
    if (withSample && !FillSampleData(file, error))
        return false;
    if (!reopen(error))
        return false;
    reloadCustomFields();
    m_prompt = std::make_unique<ScriptedPrompt>();
    return true;
}

void ViewsFixture::tearDown() {
    db().close();
    m_prompt.reset();
    m_dir.reset();
}

bool ViewsFixture::reopen(QString* error) {
    try {
        db().open(QStringLiteral("Provider=VOSK.SQLite;Data Source=") + databaseFile() + QLatin1Char(';'));
    } catch (const VbError& e) {
        *error = e.description;
        return false;
    }
    return true;
}

bool ViewsFixture::addRecipeCycle(QString* error) {
    db().close();
    return AddRecipeCycle(databaseFile(), RecipeCycle(), error) && reopen(error);
}

QString ViewsFixture::databaseFile() const {
    return path() + QStringLiteral("/data.vosk");
}

bool ViewsFixture::exec(const QStringList& statements, QString* error) {
    for (const QString& sql : statements) {
        try {
            db().execute(sql);
        } catch (const VbError& e) {
            *error = sql + QStringLiteral(" -> ") + e.description;
            db().clearErrors();
            return false;
        }
    }
    return true;
}

QVariant ViewsFixture::scalar(const QString& sql) {
    Recordset rs;
    rs.open(sql);
    return rs.eof() ? QVariant() : rs.value(0);
}
