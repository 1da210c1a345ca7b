#pragma once
// The sample world in a temporary program folder, open while a group of editor figures runs. Going out
// of scope closes the windows the group opened and the database, and gives the program folder back.
#include "core/childwindows.h"
#include "core/programfolder.h"
#include "data/database.h"
#include "data/sampledata.h"
#include "data/schema.h"
#include "editors/editors.h"

#include <QApplication>
#include <QTemporaryDir>
#include <cstdio>

namespace bench {

class SampleWorld {
public:
    explicit SampleWorld(const char* group) : m_before(programFolder()) {
        setProgramFolder(m_dir.path());
        const QString file = m_dir.filePath(QStringLiteral("data.vosk"));
        QString error;
        if (!CreateDatabase(file, &error) || !FillSampleData(file, &error)) {
            std::printf("%s: no database (%s)\n", group, qPrintable(error));
            return;
        }
        db().open(QStringLiteral("Provider=VOSK.SQLite;Data Source=") + file + QLatin1Char(';'));
        m_ok = true;
    }
    ~SampleWorld() {
        CloseChildWindows();
        QApplication::processEvents();
        db().close();
        setProgramFolder(m_before);
    }
    SampleWorld(const SampleWorld&) = delete;
    SampleWorld& operator=(const SampleWorld&) = delete;
    bool ok() const { return m_ok; }

private:
    QTemporaryDir m_dir;
    QString m_before;
    bool m_ok = false;
};

// Opens the editor of a record of the sample world and hands back its window.
template <typename W> W* OpenRecordEditor(const QString& kind, const QString& name) {
    OpenEditor(kind, name);
    return qobject_cast<W*>(FindChildWindow(QStringLiteral("Edit: ") + name));
}

} // namespace bench
