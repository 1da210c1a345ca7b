// The Help and Print menus of the main window over the sample database: the user guide and Read Me,
// the about box, the bug report window (also after an error), and Print Filtered List to a PDF file.
#include "app/aboutfacts.h"
#include "app/frmabout.h"
#include "app/frmhelp.h"
#include "app/frmmain.h"
#include "bugreport/frmbugsubmissions.h"
#include "core/childwindows.h"
#include "core/printjob.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/recordset.h"
#include "lists/frmprintlist.h"
#include "lists/listmodel.h"
#include "viewsfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

namespace {
// Runs check on the modal dialog of type T once it is up, then lets it close.
template <typename T> void whenModal(std::function<void(T*)> check) {
    QTimer::singleShot(0, [check] {
        if (auto* d = qobject_cast<T*>(QApplication::activeModalWidget()))
            check(d);
        else
            QFAIL("the dialog did not come up");
    });
}

QStringList links(const QString& htmlFile) {
    QFile f(htmlFile);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    QStringList out;
    const QRegularExpression href("href=\"([^\"#]+)\"");
    for (auto m = href.globalMatch(QString::fromUtf8(f.readAll())); m.hasNext();)
        out << m.next().captured(1);
    return out;
}
} // namespace

class TestHelpMenu : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() {
        printjob::setPrinterCheck([] { return false; });
    }
    void init() {
        QString error;
        QVERIFY2(m_fixture.setUp(true, &error), qPrintable(error));
        m_main = std::make_unique<frmMain>();
    }
    void cleanup() {
        CloseChildWindows();
        m_main.reset();
        m_fixture.tearDown();
    }

    // The guide shipped by the build opens at its index, and links are followed inside the window.
    void helpTopicsOpenTheGuide() {
        QVERIFY(QDir().mkpath(helpFile()));
        for (const QString& f : QDir(VOSK_HELP_DIR).entryList(QDir::Files))
            QVERIFY(QFile::copy(QDir(VOSK_HELP_DIR).filePath(f), helpFile(f)));
        // The index reaches every page, and no page links to one that is not there.
        const QStringList index = links(HelpIndexPath());
        for (const QString& page : QDir(helpFile()).entryList({"*.html"})) {
            QVERIFY2(page == "index.html" || index.contains(page), qPrintable(page));
            for (const QString& link : links(helpFile(page)))
                QVERIFY2(QFile::exists(helpFile(link)), qPrintable(page + " -> " + link));
        }
        m_main->menuEntry("mnuHelpHelp")->trigger();
        auto* help = qobject_cast<frmHelp*>(FindChildWindow("VOSK Help"));
        QVERIFY(help);
        QCOMPARE(help->txtPage->source(), QUrl::fromLocalFile(HelpIndexPath()));
        QVERIFY(help->txtPage->toPlainText().contains("VOSK user guide"));
        Q_EMIT help->txtPage->anchorClicked(QUrl("printing.html"));
        QVERIFY(help->txtPage->toPlainText().contains("Without a printer"));
        QVERIFY(help->cmdBack->isEnabled());
        help->cmdContents->click();
        QCOMPARE(help->txtPage->source(), QUrl::fromLocalFile(HelpIndexPath()));
        m_main->menuEntry("mnuHelpHelp")->trigger(); // brought forward, not opened twice
        QCOMPARE(m_fixture.prompt().count(), 0);
    }

    void readMeAndMissingFiles() {
        m_main->menuEntry("mnuHelpHelp")->trigger();
        QCOMPARE(m_fixture.prompt().count(), 1);
        QVERIFY(m_fixture.prompt().last().text.contains("index.html") &&
                m_fixture.prompt().last().text.contains("missing"));
        QVERIFY(!FindChildWindow("VOSK Help"));

        QVERIFY(QFile::copy(VOSK_README, ReadMePath()));
        m_main->menuEntry("mnuHelpReadMe")->trigger();
        auto* readMe = qobject_cast<frmHelp*>(FindChildWindow("VOSK Read Me"));
        QVERIFY(readMe);
        QVERIFY(readMe->txtPage->toPlainText().contains("Velmora"));
        QVERIFY(!readMe->txtPage->toPlainText().contains("## ")); // shown as a document, not as its source
    }

    void aboutShowsTheFacts() {
        const AboutFacts f = GatherAboutFacts();
        QCOMPARE(f.databasePath, QDir::toNativeSeparators(databasePath()));
        QCOMPARE(f.counts.size(), 8);
        QCOMPARE(f.counts.first().kind, QString("Equipment"));
        Recordset rs;
        rs.open("SELECT COUNT(*) FROM EQUIPMENTS");
        QCOMPARE(f.counts.first().count, rs.intValue(0));
        rs.close();
        bool shown = false;
        whenModal<frmAbout>([&](frmAbout* about) {
            shown = about->lblTitle->text().startsWith("VOSK v" + f.version) &&
                    about->lblDatabase->text().contains(f.databasePath) &&
                    about->lstCounts->item(0, 1)->text() ==
                        QLocale(QLocale::English).toString(f.counts[0].count) &&
                    about->lblVersions->text().contains(qVersion()) &&
                    about->lblVersions->text().contains(f.sqliteVersion) &&
                    about->txtLicence->toPlainText().startsWith("MIT License");
            about->accept();
        });
        m_main->menuEntry("mnuHelpAbout")->trigger();
        QVERIFY(shown);
    }

    // Submit a Bug opens the window; a run-time error opens it only with "ReportErrorMessages" on.
    void bugWindowFromMenuAndErrors() {
        m_main->menuEntry("mnuHelpSubmitBug")->trigger();
        auto* bug = qobject_cast<frmBugSubmissions*>(FindChildWindow("Submit a Bug"));
        QVERIFY(bug && bug->isVisible() && bug->txtDescription->toPlainText().isEmpty());
        bug->close();
        QTRY_VERIFY(!FindChildWindow("Submit a Bug"));

        ReportDBError(VbError(91, "Object variable not set"), "cmdSave_Click", "Form frmAddEquip");
        QVERIFY(!FindChildWindow("Submit a Bug"));
        opt::saveFlag(opt::ReportErrorMessages, true);
        ReportDBError(VbError(91, "Object variable not set"), "cmdSave_Click", "Form frmAddEquip");
        bug = qobject_cast<frmBugSubmissions*>(FindChildWindow("Submit a Bug"));
        QVERIFY(bug);
        QCOMPARE(bug->txtDescription->toPlainText(),
                 QString("Object variable not set >procedure cmdSave_Click of Form frmAddEquip"));
        QCOMPARE(bug->txtErrorCodes->text(), QString("91"));
        QCOMPARE(bug->parentWidget(), static_cast<QWidget*>(m_main.get()));
    }

    // The list as filtered and sorted, with the columns the list shows, in its order, to a PDF file
    // the user chose; the choice is remembered for the category.
    void printFilteredList() {
        QComboBox* level = m_main->cmbLevel;
        level->setCurrentIndex(level->findText("12"));
        const int rows = m_main->model()->rowCount();
        QVERIFY(rows > 0);
        QTemporaryDir out;
        m_fixture.prompt().queueText(out.filePath("equipment"));
        QStringList offered;
        QString subtitle;
        whenModal<frmPrintList>([&](frmPrintList* d) {
            for (int i = 0; i < d->lstColumns->count(); ++i)
                if (d->lstColumns->item(i)->checkState() == Qt::Checked)
                    offered << d->lstColumns->item(i)->text();
            subtitle = d->txtSubtitle->text();
            d->cmdPrint->click();
        });
        m_main->menuEntry("mnuPrintPrintFilteredList")->trigger();
        QCOMPARE(subtitle, QString("Level: 12"));
        QCOMPARE(offered.first(), m_main->model()->headerData(0, Qt::Horizontal).toString());
        QVERIFY(!offered.contains("Ticked"));
        QCOMPARE(m_fixture.prompt().last().kind, ScriptedPrompt::Kind::SaveFile);
        QCOMPARE(m_fixture.prompt().last().extra, QString("Equipment.pdf"));
        QFile pdf(out.filePath("equipment.pdf"));
        QVERIFY(pdf.open(QIODevice::ReadOnly) && pdf.readAll().startsWith("%PDF"));
        QVERIFY(!GetSetting("PrintList", "Equipment/Columns").isEmpty());

        // An empty list is not printed.
        level->setCurrentIndex(level->findText("All"));
        m_main->cmbChecked->setCurrentIndex(m_main->cmbChecked->findText("Checked"));
        db().execute("UPDATE EQUIPMENTS SET CHECK = FALSE");
        m_main->RefreshGrid();
        QCOMPARE(m_main->model()->rowCount(), 0);
        m_fixture.prompt().clear();
        m_main->menuEntry("mnuPrintPrintFilteredList")->trigger();
        QCOMPARE(m_fixture.prompt().count(), 1);
        QVERIFY(m_fixture.prompt().last().text.startsWith("The list is empty"));
    }

private:
    QString helpFile(const QString& file = QString()) { return m_fixture.path() + "/help/" + file; }
    ViewsFixture m_fixture;
    std::unique_ptr<frmMain> m_main;
};

QTEST_MAIN(TestHelpMenu)
#include "tst_helpmenu.moc"
