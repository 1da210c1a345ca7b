#pragma once
// A program folder of its own for each views test: settings kept in it, a "VOSK.ini" with the views'
// sections, a new database (empty or the sample world) opened as the shared connection, and the
// scripted prompt that records every box.
#include "core/scriptedprompt.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>
#include <memory>

// The one way a test keeps the settings store away from the user's own: from now on the store lives
// in folder/settings, and it starts empty.
void IsolateSettings(const QString& folder);

class ViewsFixture {
public:
    // withSample: fill the sample world; otherwise the tables are empty and the test adds its rows.
    bool setUp(bool withSample, QString* error);
    void tearDown();

    // Runs statements in the program's SQL dialect; false (with the reason) on the first failure.
    bool exec(const QStringList& statements, QString* error);
    QVariant scalar(const QString& sql);
    // Closes the database, adds recipes that contain themselves, and opens it again.
    bool addRecipeCycle(QString* error);
    QString path() const { return m_dir ? m_dir->path() : QString(); }
    QString databaseFile() const;
    ScriptedPrompt& prompt() { return *m_prompt; }

private:
    bool reopen(QString* error);
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};
