// Help Topics, Read Me, About and Submit a Bug; the error reporter's way to the bug report window.
#include "app/frmabout.h"
#include "app/frmhelp.h"
#include "app/frmmain.h"
#include "app/wiring.h"
#include "bugreport/frmbugsubmissions.h"
#include "data/errorreport.h"

void wireHelp(frmMain& w) {
    w.setMenuHandler(QStringLiteral("mnuHelpHelp"),
                     [] { ShowHelpFile(HelpIndexPath(), QStringLiteral("VOSK Help")); });
    w.setMenuHandler(QStringLiteral("mnuHelpReadMe"),
                     [] { ShowHelpFile(ReadMePath(), QStringLiteral("VOSK Read Me")); });
    w.setMenuHandler(QStringLiteral("mnuHelpAbout"), [&w] {
        frmAbout about(&w);
        about.exec();
    });
    w.setMenuHandler(QStringLiteral("mnuHelpSubmitBug"), [] { OpenBugSubmissions(); });
    // A run-time error that is not the database's opens the window when "ReportErrorMessages" is on.
    setBugReportOpener(
        [](const QString& description, const QString& number) { OpenBugSubmissions(description, number); });
}
