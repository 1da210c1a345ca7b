#pragma once
// A program folder in a temporary directory with a sample database, a VOSK.ini and settings of its
// own, shared by the main window's tests.
#include "core/scriptedprompt.h"

#include <QString>
#include <QTemporaryDir>
#include <QVariant>
#include <memory>

class MainWindowFixture {
public:
    // Creates the folder, the database (CreateDatabase + FillSampleData) and opens the connection.
    bool setUp(QString* error);
    void tearDown();
    QString folder() const { return m_dir ? m_dir->path() : QString(); }
    ScriptedPrompt& prompt() { return *m_prompt; }

    // One value of the first row of a statement (null when there is no row).
    static QVariant scalar(const QString& sql);
    static long count(const QString& sql);
    // The lines of errors.log.
    QStringList errorLog() const;

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};
