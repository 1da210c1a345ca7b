#pragma once
// A game folder of its own for each test: Data/Client/OUTPUT (the case the game's installer left),
// two characters among files that must not be taken for characters, and a Wine prefix whose Windows
// folder receives the bare-name options writes.
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

class GameFolder {
public:
    bool setUp(QString* error);
    QString game() const { return m_dir->filePath(QStringLiteral("Velmora")); }
    QString output() const { return game() + QStringLiteral("/Data/Client/OUTPUT"); }
    QString winePrefix() const { return m_dir->filePath(QStringLiteral("wine")); }
    QString wineWindows() const { return winePrefix() + QStringLiteral("/drive_c/windows"); }
    // The characters' stems in the order the channel finds them.
    static QStringList stems() { return {QStringLiteral("player12_log"), QStringLiteral("Player7_log")}; }
    QString page(int character, int page) const;
    // The pages from 954 up to `last` that exist (build views may run past 999).
    QList<int> answerPages(int character, int last = 1300) const;

    // Writes the command page as the game does, dated `seconds` after a fixed start, so that a later
    // command is newer whatever the file system's clock resolution.
    void typeCommand(int character, const QString& command, int seconds) const;
    void setModified(const QString& file, int seconds) const;

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

QByteArray readBytes(const QString& file);
bool writeBytes(const QString& file, const QByteArray& bytes);
// A page as the game shows it: its "LINES" lines joined by CR LF.
QString shownText(const QString& pageFile);
// The bytes of a page written afresh with these lines.
QByteArray freshPage(const QStringList& lines);
