#pragma once
// The game channel: while game interaction is on, the program serves the running game through the
// captain's-log page files of every character. Page 950 holds a welcome and the command help, page
// 952 the "press next" notice; the player types a command on page 951 inside the game; the answer
// goes to page 953 and its details to 954 onwards, and a beep tells the player to turn the page.
// Everything runs on the window's thread from a 250 ms timer; nothing here shows a message box.
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <vector>

class Recordset;

class clsVLInterface : public QObject {
    Q_OBJECT
public:
    explicit clsVLInterface(QObject* parent = nullptr);
    ~clsVLInterface() override;

    // Splits the text at CR LF and writes it as the page: "LINES" of "NUM_LINES", then each line as
    // "TEXT" of "LINE-0000" onwards. Line sections beyond the new count are left as they were.
    void WriteCapLogFile(const QString& text, int character, int page);
    // Adds the text's lines after the page's current "LINES" count.
    void AppendCapLogFile(const QString& text, int character, int page);
    // Line `line` of the character's command page (951), cut to 511 characters as the game's reader
    // does; empty when there is no such page or line.
    QString ReadCapLog(const QString& character, int line);

    // Setting either property restarts the channel: the characters are found again, pages 950 and 952
    // rewritten, 953 to 999 deleted and the commands already on page 951 left unanswered.
    QString VlNFolder() const { return m_folder; }
    void setVlNFolder(const QString& folder);
    bool InteractWithGame() const { return m_on; }
    void setInteractWithGame(bool on);

    // The BuildView command: the build text of every equipment whose name contains the keyword (at most
    // 10), each down its upgrade chain, on pages from 954; the index on page 953.
    void DisplayBuildView(const QString& keyword, int character);

    // The timer's tick: looks at every character's command page and answers a command written since
    // the last look. Tests call it instead of waiting for the timer.
    void m_oTimer_ThatTime();
    // 250 while polling, 0 while stopped.
    int timerInterval() const;
    // One entry per character found, "player12_log" and the like.
    QStringList logStems() const { return m_stems; }
    // output folder/stem-page.ini of the character; empty for an unknown character.
    QString GetCapLogPath(int character, int page) const;
    // The system beep that tells the player the answer is ready (none until one is installed).
    void setBeep(std::function<void()> beep) { m_beep = std::move(beep); }

private:
    void StartGameLink();
    void ProcessCommand(int character);
    void RunCommand(int kind, int character, const QString& argument);
    void ShowUsage(const QString& command, int kind, int character);
    void SearchEquipment(QString keyword, int character);
    void WriteFieldsToPage(Recordset& rs, int character, int page);
    void ClearCapLogPages(int character);
    // The detail text of one equipment: its row as label and value lines, then its specials.
    QString equipmentDetail(const QString& name);
    // Writes a build text from page 953 + page, over several pages when it is long; page is left on
    // the last page written.
    void writePaged(const QString& text, int character, int& page);
    QStringList searchNames(const QString& keyword, int limit);

    QString m_folder;
    bool m_on = false;
    QString m_output; // the output folder the characters were found in
    QStringList m_stems;
    std::vector<std::filesystem::path> m_commandPages;
    std::vector<std::filesystem::file_time_type> m_lastCommand; // min() while not seen yet
    QTimer m_oTimer;
    std::function<void()> m_beep;
};
