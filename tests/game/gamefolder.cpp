#include "gamefolder.h"

#include "core/inifile.h"
#include "game/caplog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>

namespace {
const auto Start = std::filesystem::file_time_type::clock::now() - std::chrono::hours(24);
}

bool GameFolder::setUp(QString* error) {
    m_dir = std::make_unique<QTemporaryDir>();
    if (!m_dir->isValid() || !QDir().mkpath(output()) || !QDir().mkpath(wineWindows()) ||
        !QDir().mkpath(output() + QStringLiteral("/player5_options.ini"))) {
        *error = QStringLiteral("no temporary game folder");
        return false;
    }
    // Two characters, and names that must not match: no digit, a longer extension, a prefix before
    // "player", another extension, no dot, and a folder with a matching name.
    const QStringList files = {
        "player12_options.ini", "Player7_Options.INI", "player_options.ini",  "player1_options.ini.bak",
        "xplayer3_options.ini", "player4_options.txt", "player6_options_ini", "v&l.log"};
    for (const QString& f : files)
        if (!writeBytes(output() + QLatin1Char('/') + f, "[INT-001]\r\nOptionValue=1\r\n")) {
            *error = QStringLiteral("cannot write ") + f;
            return false;
        }
    return true;
}

QString GameFolder::page(int character, int page) const {
    return caplog::pagePath(output(), stems().at(character), page);
}

QList<int> GameFolder::answerPages(int character, int last) const {
    QList<int> pages;
    for (int p = caplog::AnswerPage + 1; p <= last; ++p)
        if (QFileInfo::exists(page(character, p)))
            pages << p;
    return pages;
}

void GameFolder::typeCommand(int character, const QString& command, int seconds) const {
    const QString file = page(character, caplog::CommandPage);
    writeBytes(file, "[NUM_LINES]\r\nLINES=1\r\n[LINE-0000]\r\nTEXT=" + profile::encode(command) + "\r\n");
    setModified(file, seconds);
}

void GameFolder::setModified(const QString& file, int seconds) const {
    std::error_code ec;
    std::filesystem::last_write_time(QFile::encodeName(file).toStdString(),
                                     Start + std::chrono::seconds(seconds), ec);
}

QByteArray readBytes(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeBytes(const QString& file, const QByteArray& bytes) {
    QFile f(file);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

QString shownText(const QString& pageFile) {
    const ProfileFile page(pageFile);
    if (!page.existed())
        return QStringLiteral("<no page>");
    const long n = caplog::leadingNumber(page.value(QStringLiteral("NUM_LINES"), QStringLiteral("LINES")));
    QStringList lines;
    for (int i = 0; i < n; ++i)
        lines << page.value(caplog::lineSection(i), QStringLiteral("TEXT"));
    return lines.join(caplog::CrLf);
}

QByteArray freshPage(const QStringList& lines) {
    QByteArray out = "[NUM_LINES]\r\nLINES=" + QByteArray::number(lines.size()) + "\r\n";
    for (int i = 0; i < lines.size(); ++i)
        out += "[" + caplog::lineSection(i).toLatin1() + "]\r\nTEXT=" + profile::encode(lines.at(i)) + "\r\n";
    return out;
}
