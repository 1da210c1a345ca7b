#pragma once
// Keeps a test program away from the settings of whoever runs it: while an IsolatedSettings lives,
// the per-user settings store (and the system-wide one it falls back to) is a new, empty temporary
// folder. Make it a member of the test class, so it is in place before initTestCase reads a setting.
// QSettings cannot tell where its store was before, so the folder is not handed back: the store
// stays pointed at a folder that no longer exists, which reads as empty and writes nothing.
#include <QString>
#include <QTemporaryDir>

class IsolatedSettings {
public:
    IsolatedSettings();
    IsolatedSettings(const IsolatedSettings&) = delete;
    IsolatedSettings& operator=(const IsolatedSettings&) = delete;

    bool isValid() const { return m_dir.isValid(); }
    QString path() const { return m_dir.path(); }
    // Empties the store again (between test functions).
    void clear();

private:
    QTemporaryDir m_dir;
};
