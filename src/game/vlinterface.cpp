// The channel's life: starting and stopping, the pages it owns, and the poll of the command pages.
#include "game/vlinterface.h"

#include "core/inifile.h"
#include "game/buildtext.h"
#include "game/caplog.h"

#include <QFile>
#include <QFileInfo>

namespace fs = std::filesystem;

namespace {
constexpr int PollInterval = 250;
constexpr auto NotSeen = fs::file_time_type::min();

#define VOSK_STR2(x) #x
#define VOSK_STR(x) VOSK_STR2(x)
const char* const VersionText =
    VOSK_STR(VOSK_VERSION_MAJOR) "." VOSK_STR(VOSK_VERSION_MINOR) "." VOSK_STR(VOSK_VERSION_REVISION);

fs::path nativePath(const QString& file) {
#ifdef Q_OS_WIN
    return fs::path(file.toStdWString());
#else
    return fs::path(QFile::encodeName(file).toStdString());
#endif
}

QString welcomeText() {
    const QString n = caplog::CrLf;
    return QStringLiteral("Welcome to VOSK v") + QLatin1String(VersionText) + n +
           QStringLiteral("Current Supported Commands & Syntax") + n + n +
           QStringLiteral("1. SearchEquipment Name_of_Equipment") + n + n +
           QStringLiteral("2. BuildView Name_of_Equipment") + n + n +
           QStringLiteral("Name_of_Equipment May be a partial or complete equipment name and") + n +
           QStringLiteral("MAY NOT contain spaces. Please use an underscore in place of a space.");
}

// Only blanks are trimmed, as the command line always was.
QString trimBlanks(const QString& s) {
    qsizetype b = 0, e = s.size();
    while (b < e && s.at(b) == QLatin1Char(' '))
        ++b;
    while (e > b && s.at(e - 1) == QLatin1Char(' '))
        --e;
    return s.mid(b, e - b);
}
} // namespace

clsVLInterface::clsVLInterface(QObject* parent) : QObject(parent) {
    m_oTimer.setInterval(PollInterval);
    connect(&m_oTimer, &QTimer::timeout, this, &clsVLInterface::m_oTimer_ThatTime);
}

clsVLInterface::~clsVLInterface() = default;

void clsVLInterface::setVlNFolder(const QString& folder) {
    m_folder = folder;
    StartGameLink();
}

void clsVLInterface::setInteractWithGame(bool on) {
    m_on = on;
    StartGameLink();
}

int clsVLInterface::timerInterval() const {
    return m_oTimer.isActive() ? m_oTimer.interval() : 0;
}

QString clsVLInterface::GetCapLogPath(int character, int page) const {
    if (character < 0 || character >= m_stems.size())
        return {};
    return caplog::pagePath(m_output, m_stems.at(character), page);
}

void clsVLInterface::StartGameLink() {
    if (m_folder.isEmpty() || !m_on) {
        m_oTimer.stop();
        return;
    }
    // A folder that is not there, or holds no character, leaves the channel as it was.
    if (!QFileInfo(m_folder).isDir())
        return;
    const QString output = caplog::outputFolder(m_folder);
    const QStringList files = caplog::optionsFiles(output);
    if (files.isEmpty())
        return;
    QStringList stems;
    for (const QString& f : files) {
        stems << caplog::logStem(f);
        // Addressed by the bare name, so it lands in the Windows folder, not beside the game's file;
        // that is where this setting has always been written.
        WriteIni(f, QStringLiteral("INT-017"), QStringLiteral("OptionValue"), QStringLiteral("950"));
    }
    m_output = output;
    m_stems = stems;
    m_commandPages.clear();
    for (int c = 0; c < m_stems.size(); ++c)
        m_commandPages.push_back(nativePath(GetCapLogPath(c, caplog::CommandPage)));
    m_lastCommand.assign(m_stems.size(), NotSeen);
    for (int c = 0; c < m_stems.size(); ++c) {
        WriteCapLogFile(welcomeText(), c, caplog::WelcomePage);
        WriteCapLogFile(QStringLiteral("Processing, please press next once you hear a tone."), c,
                        caplog::ProcessingPage);
        ClearCapLogPages(c);
    }
    m_oTimer.start(PollInterval);
}

void clsVLInterface::ClearCapLogPages(int character) {
    for (int page = caplog::AnswerPage; page <= caplog::LastPage; ++page) {
        const QString path = GetCapLogPath(character, page);
        const QFileInfo info(path);
        // A read-only page is not forced away.
        if (info.exists() && (info.permissions() & QFileDevice::WriteOwner))
            QFile::remove(path);
    }
}

void clsVLInterface::WriteCapLogFile(const QString& text, int character, int page) {
    const QString path = GetCapLogPath(character, page);
    if (path.isEmpty())
        return;
    const QStringList lines = caplog::splitLines(text);
    ProfileFile file(path);
    file.setValue(QStringLiteral("NUM_LINES"), QStringLiteral("LINES"), QString::number(lines.size()));
    for (int i = 0; i < lines.size(); ++i)
        file.setValue(caplog::lineSection(i), QStringLiteral("TEXT"), lines.at(i));
    file.save();
}

void clsVLInterface::AppendCapLogFile(const QString& text, int character, int page) {
    const QString path = GetCapLogPath(character, page);
    if (path.isEmpty())
        return;
    const QStringList lines = caplog::splitLines(text);
    ProfileFile file(path);
    const long n = caplog::leadingNumber(file.value(QStringLiteral("NUM_LINES"), QStringLiteral("LINES")));
    file.setValue(QStringLiteral("NUM_LINES"), QStringLiteral("LINES"), QString::number(n + lines.size()));
    for (int i = 0; i < lines.size(); ++i)
        file.setValue(caplog::lineSection(int(n) + i), QStringLiteral("TEXT"), lines.at(i));
    file.save();
}

QString clsVLInterface::ReadCapLog(const QString& character, int line) {
    bool ok = false;
    const int c = character.trimmed().toInt(&ok);
    const QString path = ok ? GetCapLogPath(c, caplog::CommandPage) : QString();
    if (path.isEmpty())
        return {};
    return ReadProfileString(path, caplog::lineSection(line), QStringLiteral("TEXT"), QString(),
                             profile::CapLogBuffer);
}

void clsVLInterface::m_oTimer_ThatTime() {
    for (size_t c = 0; c < m_commandPages.size(); ++c) {
        // One look at the file gives both whether it is there and when it was written.
        std::error_code ec;
        const fs::file_time_type t = fs::last_write_time(m_commandPages[c], ec);
        if (ec)
            continue;
        // The first sighting only remembers the time: a command typed before the start is not run.
        if (m_lastCommand[c] != NotSeen && m_lastCommand[c] < t)
            ProcessCommand(int(c));
        if (c < m_lastCommand.size())
            m_lastCommand[c] = t;
    }
}

void clsVLInterface::ProcessCommand(int character) {
    m_oTimer.stop();
    try {
        const QString command = trimBlanks(ReadCapLog(QString::number(character), 0));
        if (!command.isEmpty()) {
            // Single blanks part the words: two blanks in a row give an empty word.
            const QStringList words = command.split(QLatin1Char(' '));
            const QString verb = words.first().toUpper();
            if (verb == QLatin1String("SEARCHEQUIPMENT")) {
                if (words.size() < 2)
                    ShowUsage(command, 1, character);
                else
                    RunCommand(1, character, words.at(1));
            } else if (verb == QLatin1String("BUILDVIEW")) {
                if (words.size() < 2)
                    ShowUsage(command, 2, character);
                else
                    RunCommand(2, character, words.at(1));
            } else {
                RunCommand(0, character, words.first());
            }
        }
    } catch (const std::exception& e) {
        LogChannelError(e, QStringLiteral("ProcessCommand"));
    }
    if (m_beep)
        m_beep();
    m_oTimer.start(PollInterval);
}

void clsVLInterface::RunCommand(int kind, int character, const QString& argument) {
    ClearCapLogPages(character);
    if (kind == 0)
        WriteCapLogFile(argument + QStringLiteral(" is an Invalid Command!"), character, caplog::AnswerPage);
    else if (kind == 1)
        SearchEquipment(argument, character);
    else if (kind == 2)
        DisplayBuildView(argument, character);
}

void clsVLInterface::ShowUsage(const QString& command, int kind, int character) {
    const QString n = caplog::CrLf;
    QString message;
    if (kind == 1)
        message =
            QStringLiteral(
                "The command entered contains invalid parameters or the wrong number of parameters.") +
            n + QStringLiteral("The correct usage for the SearchEquipment command is: ") + n +
            QStringLiteral("SearchEquipment EquipmentName") + n +
            QStringLiteral(
                "There can only be one space between the SearchEquipment and EquipmentName. If EquipmentName contains any spaces, please replace them with underscores (_)");
    else if (kind == 2)
        // The BuildView help names SearchEquipment; it always has.
        message =
            QStringLiteral(
                "The command entered contains invalid parameters or the wrong number of parameters.") +
            n + QStringLiteral("The correct usage for the BuildView Command is: ") + n +
            QStringLiteral("BuildView Equipment_Name") + n +
            QStringLiteral(
                "There can only be one space between the SearchEquipment and Equipment_Name. If Equipment_Name contains any spaces, please replace them with underscores (_)");
    else
        message = QStringLiteral("Help for this command has not been created yet. :(");
    WriteCapLogFile(message + n + n + QStringLiteral("Invalid Command Usage: ") + n + trimBlanks(command),
                    character, caplog::AnswerPage);
}
