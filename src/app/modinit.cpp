#include "app/modinit.h"
#include "app/frmsplash.h"
#include "app/modmain_app.h"
#include "app/singleinstance.h"
#include "core/childwindows.h"
#include "core/imagestore.h"
#include "core/programfolder.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "data/backup.h"
#include "data/database.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QProgressBar>
#include <QWidget>
#include <filesystem>
#include <system_error>

namespace {

constexpr unsigned char ScrambleKey = 0xa5;

// The provider prefix as it is kept in the program.
constexpr unsigned char ScrambledPrefix[] = {
    0xf5, 0xd7, 0xca, 0xd3, 0xcc, 0xc1, 0xc0, 0xd7, 0x98, 0xf3, 0xea, 0xf6, 0xee, 0x8b, 0xf6, 0xf4, 0xe9,
    0xcc, 0xd1, 0xc0, 0x8b, 0x94, 0x9e, 0xf5, 0xc0, 0xd7, 0xd6, 0xcc, 0xd6, 0xd1, 0x85, 0xf6, 0xc0, 0xc6,
    0xd0, 0xd7, 0xcc, 0xd1, 0xdc, 0x85, 0xec, 0xcb, 0xc3, 0xca, 0x98, 0xe3, 0xc4, 0xc9, 0xd6, 0xc0, 0x9e};

std::function<QWidget*()>& factoryRef() {
    static std::function<QWidget*()> factory;
    return factory;
}

std::function<void(long)>& observerRef() {
    static std::function<void(long)> observer;
    return observer;
}

namespace fs = std::filesystem;

fs::path nativePath(const QString& path) {
    return fs::path(path.toStdU16String());
}

// On this platform the read-only attribute is the owner's write permission.
bool isReadOnly(const fs::path& file) {
    std::error_code ec;
    const fs::file_status st = fs::status(file, ec);
    if (ec || !fs::exists(st))
        throw VbError(vberr::FileNotFound, QStringLiteral("File not found"));
    return (st.permissions() & fs::perms::owner_write) == fs::perms::none;
}

void clearReadOnly(const fs::path& file) {
    // Read the permissions again and flip only the one bit, so that every other bit is kept.
    std::error_code ec;
    const fs::perms now = fs::status(file, ec).permissions();
    if (!ec)
        fs::permissions(file, now ^ fs::perms::owner_write, fs::perm_options::replace, ec);
    if (ec)
        throw VbError(vberr::PermissionDenied, QStringLiteral("Permission denied"));
}

} // namespace

QString Unscramble(const QString& text) {
    QString out(text.size(), QChar());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t code = text.at(i).unicode();
        out[i] = QChar(code < 256 ? char16_t(code ^ ScrambleKey) : code);
    }
    return out;
}

QString ProviderPrefix() {
    QString scrambled;
    for (unsigned char c : ScrambledPrefix)
        scrambled.append(QChar(char16_t(c)));
    return Unscramble(scrambled);
}

QString ConnectionText() {
    return ProviderPrefix() + QStringLiteral("Data Source=") + databasePath() + QStringLiteral(";");
}

void setMainWindowFactory(std::function<QWidget*()> factory) {
    factoryRef() = std::move(factory);
}
void setPreloadObserver(std::function<void(long)> observer) {
    observerRef() = std::move(observer);
}

void UnloadAllWindows() {
    CloseChildWindows();
    // Closing one window may close others (owned windows go with their owner): take the list afresh
    // after every close, and close each window once.
    QList<QPointer<QWidget>> closed;
    auto alreadyClosed = [&](QWidget* w) {
        for (const auto& c : closed)
            if (c == w)
                return true;
        return false;
    };
    for (;;) {
        QWidget* next = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (!alreadyClosed(w) && (w->isVisible() || w->testAttribute(Qt::WA_DeleteOnClose))) {
                next = w;
                break;
            }
        if (!next)
            break;
        closed.append(next);
        next->close();
        if (next->isVisible()) // a window that refuses to close is hidden instead
            next->hide();
    }
}

QString MissingDatabaseHelp(const QString& path, bool fileExists) {
    const QString native = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    QString text = QStringLiteral("\r\n\r\nVOSK looked for its database here:\r\n") + native;
    if (fileExists)
        text +=
            QStringLiteral("\r\nThe file there is not a database VOSK can open; it has been left as it is. "
                           "Restore a backup over it, or move it aside and make a new one.");
    text +=
        QStringLiteral("\r\n\r\nTo make a database with the sample data, run:\r\nvosk-makedb --sample \"") +
        native + QStringLiteral("\"");
    return text;
}

void RunVOSK() {
    setWindowUnloader(&UnloadAllWindows);
    // While the database file is being found and opened, a failure message also says where it was
    // looked for and how to make one.
    bool findingDatabase = false;
    auto help = [&findingDatabase] {
        return findingDatabase ? MissingDatabaseHelp(databasePath(), QFileInfo::exists(databasePath()))
                               : QString();
    };
    try {
        if (!AcquireInstanceLock()) {
            MsgBox(QStringLiteral("VOSK is already running\r\nOnly one instance may be used at a time"),
                   vb::OKOnly + vb::Information, QStringLiteral("VOSK is Already Running"));
            return;
        }

        findingDatabase = true;
        CleanRestoreLeftovers(databasePath());
        const fs::path file = nativePath(databasePath());
        if (isReadOnly(file)) {
            const int answer =
                MsgBox(QStringLiteral(
                           "The database file is currently set to read-only. Running VOSK with a read-only "
                           "database could cause potential problems.\r\nWould you like to remove the "
                           "read-only attribute from the file?"),
                       vb::YesNo + vb::Question, QStringLiteral("Read-Only Database"));
            // On No start-up goes on; later writes fail and are reported as database errors.
            if (answer == vb::Yes)
                clearReadOnly(file);
        }

        db().open(ConnectionText());
        findingDatabase = false;

        if (!CheckDBComp()) {
            MsgBox(QStringLiteral("The database is not compatible with the VOSK program.\r\n"
                                  "If you are using a previous database, please be sure you have upgraded it "
                                  "using the DB Upgrade tool.\r\n"
                                  "If this problem persists, please contact VOSK Support."),
                   vb::OKOnly + vb::Information, QStringLiteral("Incompatible Database"));
            ShutDown();
            return;
        }

        const bool preload = opt::flag(opt::PreloadImages);
        if (!factoryRef())
            throw VbError(vberr::ObjectRequired, QStringLiteral("Object required"));
        // Making the splash's owner loads the main window; it is not shown yet.
        QWidget* main = factoryRef()();
        if (!main)
            throw VbError(vberr::ObjectRequired, QStringLiteral("Object required"));
        main->setAttribute(Qt::WA_DeleteOnClose);
        auto* splash = new frmSplash(main);
        splash->show();
        QCoreApplication::processEvents();

        if (preload) {
            QProgressBar* bar = splash->progressBar();
            const long count = GetItemIconCount();
            bar->setMinimum(0);
            bar->setMaximum(int(count));
            // Up to and including count: the store is warmed, the pictures themselves are not kept here.
            for (long i = 0; i <= count; ++i) {
                (void)GetItemIcon(i);
                if (observerRef())
                    observerRef()(i);
                bar->setValue(int(i));
            }
            splash->close();
        }
        // Without preloading the splash stays up and closes itself once the main window has been shown.
        main->show();
    } catch (const VbError& err) {
        MsgBox(QStringLiteral("Error ") + QString::number(err.number) + QStringLiteral(" (") +
               err.description + QStringLiteral(") in procedure RunVOSK of Module modInit") + help());
    } catch (const std::exception& err) {
        MsgBox(QStringLiteral("Error 5 (") + QString::fromLocal8Bit(err.what()) +
               QStringLiteral(") in procedure RunVOSK of Module modInit") + help());
    }
}

int ExecVOSK() {
    RunVOSK();
    bool showing = false;
    for (QWidget* w : QApplication::topLevelWidgets())
        showing = showing || w->isVisible();
    return showing ? QApplication::exec() : 0;
}
