#pragma once
// The game's captain's-log files as the channel finds and addresses them: the output folder below
// the game folder, the characters' options files, the log stems and the page files.
#include <QString>
#include <QStringList>

namespace caplog {
constexpr int WelcomePage = 950;
constexpr int CommandPage = 951;
constexpr int ProcessingPage = 952;
constexpr int AnswerPage = 953;
constexpr int LastPage = 999;

inline const QString CrLf = QStringLiteral("\r\n");

// game folder/Data/client/output, each of the three names matched without regard to case (the game
// runs under Wine, where the folder is an ordinary directory). Empty when there is no such folder.
QString outputFolder(const QString& gameFolder);

// True when the lower-cased file name matches "player*#*_options.ini" as a whole: "player", any
// characters, one decimal digit, any characters, "_options.ini".
bool isOptionsFile(const QString& fileName);
// The options file's name with every "_options.ini" (any case) replaced by "_log".
QString logStem(const QString& optionsFileName);
// The options files of the output folder, in name order (without regard to case); folders and
// other files are left out.
QStringList optionsFiles(const QString& outputFolder);

// output folder/stem-page.ini
QString pagePath(const QString& outputFolder, const QString& stem, int page);
// "LINE-" and the index as four digits.
QString lineSection(int line);

// Text split at CR LF as the program always split it: an empty text has no lines, a text that ends
// with CR LF has an empty last line.
QStringList splitLines(const QString& text);
// The leading whole number of a text, as the page's line count is read (anything else is 0).
long leadingNumber(const QString& text);
} // namespace caplog
