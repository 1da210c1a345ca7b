#include "app/modmain_app.h"
#include "app/singleinstance.h"
#include "core/imagestore.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"

namespace {
std::function<void()>& unloaderRef() {
    static std::function<void()> unloader;
    return unloader;
}
} // namespace

void setWindowUnloader(std::function<void()> unloader) {
    unloaderRef() = std::move(unloader);
}

bool CheckDBComp() {
    try {
        Recordset rs;
        rs.open(QStringLiteral("SELECT VERSION FROM DB_VERSION ORDER BY VERSION DESC"), db(),
                Recordset::ForwardOnly);
        // Only the newest version counts; an empty table is no version at all.
        const bool compatible =
            !rs.eof() && !rs.isNull(0) && rs.value(0).toLongLong() == modmain::SchemaVersion;
        rs.close();
        return compatible;
    } catch (const VbError& err) {
        ReportDBError(err, QStringLiteral("CheckDBComp"), QStringLiteral("Module modMain"));
    } catch (const std::exception& err) {
        ReportDBError(err, QStringLiteral("CheckDBComp"), QStringLiteral("Module modMain"));
    }
    return false;
}

void ShutDown() {
    // Closing the main window calls ShutDown, and ShutDown closes the main window.
    static bool running = false;
    if (running)
        return;
    running = true;
    struct Done {
        ~Done() { running = false; }
    } done;
    try {
        if (db().state() == Database::StateOpen)
            db().close();
        ImageStore::instance().release();
        ReleaseInstanceLock();
        if (unloaderRef())
            unloaderRef()();
    } catch (const VbError& err) {
        ReportDBError(err, QStringLiteral("ShutDown"), QStringLiteral("Module modMain"));
    } catch (const std::exception& err) {
        ReportDBError(err, QStringLiteral("ShutDown"), QStringLiteral("Module modMain"));
    }
}

void CheckCharacters() {
    try {
        Recordset rs;
        rs.open(QStringLiteral("SELECT COUNT(*) FROM CHARACTERS"), db(), Recordset::ForwardOnly);
        const long count = rs.eof() ? 0 : long(rs.value(0).toLongLong());
        rs.close();
        if (count != 0)
            return;
        QString name;
        while (name.isEmpty()) {
            name = prompts().inputBox(QStringLiteral("Please enter the name of your in-game character"),
                                      QStringLiteral("Character Name"), QString());
            if (!name.isEmpty())
                break;
            const int answer =
                MsgBox(QStringLiteral("The Character Name entered is invalid. VOSK cannot load without a "
                                      "valid character name. Would you like to try again?"),
                       vb::YesNo + vb::Question, QStringLiteral("Invalid Character Name"));
            if (answer == vb::No) {
                ShutDown();
                // The connection and every window are gone: asking again could only end in a write
                // on a closed connection.
                return;
            }
        }
        db().execute(QStringLiteral("INSERT INTO CHARACTERS (CHARACTER_NAME) VALUES ('") + FixQuotes(name) +
                     QStringLiteral("')"));
        SaveSetting(QStringLiteral("Settings"), QStringLiteral("Character"), name);
    } catch (const VbError& err) {
        ReportDBError(err, QStringLiteral("CheckCharacters"), QStringLiteral("Form frmMain"));
    } catch (const std::exception& err) {
        ReportDBError(err, QStringLiteral("CheckCharacters"), QStringLiteral("Form frmMain"));
    }
}
