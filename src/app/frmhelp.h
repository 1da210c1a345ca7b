#pragma once
// The help window: the user guide (HTML pages in the program folder's "help" folder) or the Read Me
// (README.md) shown inside the program, with links followed, Back, Forward and Contents. Addresses on
// the web open in the system's browser.
#include <QUrl>
#include <QWidget>

class QPushButton;
class QTextBrowser;

class frmHelp : public QWidget {
    Q_OBJECT
public:
    // home: the page that Contents returns to.
    frmHelp(const QString& caption, const QUrl& home, QWidget* parent = nullptr);

    QTextBrowser* txtPage = nullptr;
    QPushButton* cmdContents = nullptr;
    QPushButton* cmdBack = nullptr;
    QPushButton* cmdForward = nullptr;
    QPushButton* cmdClose = nullptr;

private:
    QUrl m_home;
};

// The guide's first page and the Read Me, in the program folder.
QString HelpIndexPath();
QString ReadMePath();
// Opens the file in a help window (or brings forward the one already showing it); a missing file is
// told to the user. False when nothing was opened.
bool ShowHelpFile(const QString& path, const QString& caption);
